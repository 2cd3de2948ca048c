#include "platform/freedesktop/FreedesktopFileManager.h"

#include "platform/Path.h"
#include "platform/posix/SharedUmask.h"

#include <QFile>
#include <QSet>

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestHiddenList = 1 << 20;

/// Whether the user has no rights to write there. Other failures are not forbidden things.
bool isForbidden(const QString& path)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), R_OK | W_OK, AT_EACCESS) != 0 &&
           (errno == EACCES || errno == EPERM || errno == EROFS);
}

} // namespace

void FreedesktopFileManager::setHidden(const QString& path)
{
    const QString list = join(parentFolder(path), u".hidden"_s);
    const QByteArray name = fileName(path).toUtf8();
    if (name.isEmpty() || name.contains('\n'))
        throw FileError(EINVAL, path);
    const bool exists = FreedesktopFileManager::exists(list);
    // Silent without access, like on systems where a separate program sets the flag and fails on its own.
    if (isForbidden(exists ? list : parentFolder(path)))
        return;
    auto content = read(list, kLargestHiddenList);
    // On purpose: an unreadable list is not replaced, it is the user's.
    if (!content && exists)
        throw FileError(EIO, list);
    QByteArray lines = content.value_or(QByteArray());
    if (lines.split('\n').contains(name))
        return;
    if (!lines.isEmpty() && !lines.endsWith('\n'))
        lines += '\n';
    const SharedUmask umask; // file browsers of all users read it
    write(list, lines + name + '\n', WriteMode::inPlace);
}

void FreedesktopFileManager::removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                                                  std::vector<DirectoryEntry>& entries) const
{
    if (!hasDotHidden)
        return;
    const auto content = read(folder + u"/.hidden"_s, kLargestHiddenList);
    if (!content)
        return;
    const QList<QByteArray> lines = content->split('\n');
    const QSet<QByteArray> names(lines.begin(), lines.end());
    std::erase_if(entries, [&](const DirectoryEntry& entry) { return names.contains(entry.name.toUtf8()); });
}

} // namespace orvanlite::platform
