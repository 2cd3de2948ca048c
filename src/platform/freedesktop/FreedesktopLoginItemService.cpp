#include "platform/freedesktop/FreedesktopLoginItemService.h"

#include "platform/FileManager.h"
#include "platform/SystemLayout.h"
#include "platform/Utf8.h"
#include "platform/freedesktop/ApplicationBundle.h"

#include <QList>

#include <cerrno>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestEntry = 1 << 16;

/// A text value of a desktop entry.
QString entryText(QString text)
{
    return text.replace(u'\\', u"\\\\"_s)
        .replace(u'\n', u"\\n"_s)
        .replace(u'\t', u"\\t"_s)
        .replace(u'\r', u"\\r"_s);
}

QString fromEntryText(const QString& text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        const QChar code = text[++i];
        plain += code == u'n'   ? u'\n'
                 : code == u't' ? u'\t'
                 : code == u'r' ? u'\r'
                 : code == u's' ? u' '
                                : code.unicode();
    }
    return plain;
}

} // namespace

QString desktopEntryExec(const QString& path)
{
    QString word;
    for (const QChar character : path) {
        if (character == u'"' || character == u'`' || character == u'$' || character == u'\\')
            word += u'\\';
        word += character;
        if (character == u'%')
            word += character; // a single one would begin a field code
    }
    return entryText(u'"' + word + u'"');
}

FreedesktopLoginItemService::FreedesktopLoginItemService(FileManager& files, const SystemLayout& layout)
    : m_files(files)
    , m_folder(layout.configuration + u"/autostart"_s)
{}

QString FreedesktopLoginItemService::entryPath(const QString& identifier) const
{
    return m_folder + u'/' + identifier + u".desktop"_s;
}

LoginItemStatus FreedesktopLoginItemService::status(const QString& identifier) const
{
    const auto entry = m_files.read(entryPath(identifier), kLargestEntry);
    if (!entry)
        return LoginItemStatus::notRegistered;
    for (const QByteArray& line : entry->split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals < 0)
            continue;
        const QByteArray key = line.first(equals).trimmed();
        const QByteArray value = line.sliced(equals + 1).trimmed();
        if (key == "TryExec" && !m_files.exists(fromEntryText(fromUtf8(value))))
            return LoginItemStatus::notFound; // the session skips such an entry
        if ((key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false"))
            return LoginItemStatus::requiresApproval;
    }
    return LoginItemStatus::enabled;
}

void FreedesktopLoginItemService::registerItem(const QString& identifier, const QString& bundlePath)
{
    const auto executable = bundleExecutable(m_files, bundlePath);
    if (!executable)
        throw FileError(ENOENT, bundlePath);
    // TryExec: an agent that was removed together with the application is skipped in silence.
    const QString entry = u"[Desktop Entry]\n"
                          "Type=Application\n"
                          "Version=1.0\n"
                          "Name=Orvanlite Helper\n"
                          "TryExec="_s +
                          entryText(*executable) + u"\nExec="_s + desktopEntryExec(*executable) +
                          u"\nTerminal=false\n"
                          "NoDisplay=true\n"
                          "X-GNOME-Autostart-enabled=true\n"_s;
    m_files.createDirectory(m_folder);
    m_files.write(entryPath(identifier), entry.toUtf8(), WriteMode::replaceFile);
}

void FreedesktopLoginItemService::unregisterItem(const QString& identifier)
{
    m_files.remove(entryPath(identifier));
}

} // namespace orvanlite::platform
