#include "support/TempRoot.h"

#include <QDir>
#include <QFile>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

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

void TempRoot::addFolder(QStringView absolutePath) const
{
    if (!QDir().mkpath(at(absolutePath)))
        qFatal("cannot make %s", qPrintable(at(absolutePath)));
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
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

QStringList TempRoot::names(QStringView absolutePath) const
{
    return QDir(at(absolutePath))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
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
