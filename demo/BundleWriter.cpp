#include "demo/BundleWriter.h"

#include "demo/BinaryInfoPlist.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"

#include <nlohmann/json.hpp>

#include <QDateTime>
#include <QFile>

#include <stdexcept>
#include <utility>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

namespace {

using Members = QList<std::pair<QString, QString>>;

Members infoMembers(const Bundle& bundle)
{
    Members members;
    const auto add = [&members](const QString& key, const QString& value) {
        if (!value.isEmpty())
            members.emplace_back(key, value);
    };
    add(u"CFBundlePackageType"_s, u"BNDL"_s);
    add(u"CFBundleExecutable"_s, bundle.executable);
    add(u"CFBundleIdentifier"_s, bundle.identifier);
    add(u"CFBundleShortVersionString"_s, bundle.version);
    return members;
}

QByteArray xmlInfo(const Bundle& bundle)
{
    QString text = uR"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
)"_s;
    const QString member = u"\t<key>%1</key>\n\t<string>%2</string>\n"_s;
    for (const auto& [key, value] : infoMembers(bundle))
        text += member.arg(key, value.toHtmlEscaped());
    if (!bundle.componentName.isEmpty()) {
        text += u"\t<key>AudioComponents</key>\n\t<array>\n\t\t<dict>\n"_s +
                member.arg(u"name"_s, bundle.componentName.toHtmlEscaped()) +
                member.arg(u"type"_s, u"aufx"_s) + u"\t\t</dict>\n\t</array>\n"_s;
    }
    return (text + u"</dict>\n</plist>\n"_s).toUtf8();
}

QString parentOf(const QString& path) { return path.first(path.lastIndexOf(u'/')); }

} // namespace

BundleWriter::BundleWriter(const platform::SystemLayout& layout)
    : m_files(platform::makeFileManager(layout))
    , m_now(static_cast<double>(QDateTime::currentSecsSinceEpoch()))
{
    if (!layout.isSandbox())
        throw std::logic_error("the sample library is made in a sandbox only");
}

BundleWriter::~BundleWriter() = default;

void BundleWriter::write(const Bundle& bundle)
{
    makeFolder(bundle.path + u"/Contents"_s);
    if (bundle.infoForm != InfoForm::none) {
        writeFile(bundle.path + u"/Contents/Info.plist"_s,
                  bundle.infoForm == InfoForm::xml
                      ? xmlInfo(bundle)
                      : binaryInfoPlist(infoMembers(bundle), bundle.componentName));
    }
    if (!bundle.clapVendor.isEmpty()) {
        nlohmann::ordered_json json;
        json["plugin"]["vendor"] = bundle.clapVendor.toStdString();
        writeFile(bundle.path + u"/clap.json"_s, QByteArray::fromStdString(json.dump(2)));
    }
    if (bundle.executable.isEmpty())
        return;
    const QString executable = bundle.path + u"/Contents/MacOS/"_s + bundle.executable;
    writeFile(executable, "no code\n");
    if (bundle.daysUnused) {
        QFile file(executable);
        const auto time = static_cast<qint64>(m_now - *bundle.daysUnused * 86400.0);
        if (!file.open(QIODevice::ReadWrite) ||
            !file.setFileTime(QDateTime::fromSecsSinceEpoch(time), QFileDevice::FileAccessTime))
            throw platform::FileError(EIO, executable);
    }
}

void BundleWriter::writeFile(const QString& path, const QByteArray& content)
{
    makeFolder(parentOf(path));
    m_files->write(path, content, platform::WriteMode::inPlace);
}

void BundleWriter::makeFolder(const QString& path) { m_files->createDirectory(path); }

} // namespace orvanlite::demo
