#include "support/TempRoot.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace orvanlite::test {

TempRoot::TempRoot()
    : m_path(QDir(m_directory.path()).canonicalPath())
{
    addFolder(u"/Users/tester");
}

void TempRoot::addFile(QStringView absolutePath, const QByteArray& content) const
{
    const QString file = at(absolutePath);
    QDir().mkpath(file.first(file.lastIndexOf(u'/')));
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file));
}

void TempRoot::addScript(QStringView absolutePath, const QByteArray& lines) const
{
    addFile(absolutePath, "#!/bin/sh\n" + lines);
    setMode(absolutePath, 0700);
}

void TempRoot::setMode(QStringView absolutePath, mode_t mode) const
{
    ASSERT_EQ(::chmod(at(absolutePath).toUtf8().constData(), mode), 0) << absolutePath.toUtf8().constData();
}

void TempRoot::addFolder(QStringView absolutePath) const
{
    if (!QDir().mkpath(at(absolutePath)))
        qFatal("cannot create %s", qPrintable(at(absolutePath)));
}

void TempRoot::addBundle(QStringView absolutePath, const QByteArray& infoPlist, bool withExecutable) const
{
    const QString bundle = absolutePath.toString();
    addFolder(bundle + u"/Contents"_s);
    if (!infoPlist.isEmpty())
        addFile(bundle + u"/Contents/Info.plist"_s, infoPlist);
    if (withExecutable) {
        const QStringView file = absolutePath.sliced(absolutePath.lastIndexOf(u'/') + 1);
        addFile(bundle + u"/Contents/MacOS/"_s + file.first(file.lastIndexOf(u'.')).toString(), "code");
    }
}

bool TempRoot::exists(QStringView absolutePath) const { return QFile::exists(at(absolutePath)); }

QByteArray TempRoot::content(QStringView absolutePath) const
{
    QFile file(at(absolutePath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList TempRoot::names(QStringView absolutePath) const
{
    return QDir(at(absolutePath))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

constexpr uid_t kNobody = 65534;

WithoutRights::WithoutRights() { EXPECT_TRUE(::geteuid() != 0 || ::seteuid(kNobody) == 0); }
WithoutRights::~WithoutRights() { EXPECT_TRUE(::getuid() != 0 || ::seteuid(0) == 0); }

struct stat statusOf(const QString& path)
{
    struct stat status {};
    EXPECT_EQ(::lstat(path.toUtf8().constData(), &status), 0) << qPrintable(path);
    return status;
}

QByteArray infoPlist(const QList<std::pair<QString, QString>>& members, const QByteArray& extra)
{
    QByteArray text = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
)";
    for (const auto& [key, value] : members) {
        text += "\t<key>" + key.toHtmlEscaped().toUtf8() + "</key>\n\t<string>" +
                value.toHtmlEscaped().toUtf8() + "</string>\n";
    }
    return text + extra + "</dict>\n</plist>\n";
}

} // namespace orvanlite::test
