#include "platform/posix/PrivateFolder.h"

#include "platform/FileManager.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QHash>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMaxAge = 3600; // seconds
constexpr QStringView kScript = u"orvanlite_batch_";
constexpr QStringView kScriptEnd = u".sh";
constexpr QStringView kCounter = u"orvanlite_progress_";
constexpr QStringView kCounterEnd = u".txt";

/// The id shared by the names of a batch's script and counter; empty for other names.
QString batchId(const QString& name)
{
    if (name.startsWith(kScript) && name.endsWith(kScriptEnd))
        return name.sliced(kScript.size()).chopped(kScriptEnd.size());
    if (name.startsWith(kCounter) && name.endsWith(kCounterEnd))
        return name.sliced(kCounter.size()).chopped(kCounterEnd.size());
    return {};
}

void requireOurs(const QString& folder, bool isOurs)
{
    if (!isOurs)
        throw FileError(EPERM, folder, u"Other users have access to the folder: "_s + folder);
}

/// Whether only we and root can replace our files in the folder.
bool isSafeAncestor(const struct stat& status)
{
    const uid_t us = ::geteuid();
    // A group with the same id as the user is that user's private group, which a umask of 002 relies on.
    const bool isOwnGroup = status.st_uid == us && status.st_gid == us;
    const bool isShared = (status.st_mode & (isOwnGroup ? S_IWOTH : S_IWOTH | S_IWGRP)) != 0;
    return (status.st_uid == us || status.st_uid == 0) &&
           (S_ISLNK(status.st_mode) || !isShared || (status.st_mode & S_ISVTX) != 0);
}

/// Checks all components, including the targets of links.
void requireSafePath(const std::filesystem::path& path)
{
    std::filesystem::path each;
    for (const auto& component : path) {
        each /= component;
        struct stat status {};
        if (::lstat(each.c_str(), &status) != 0)
            throw FileError(errno, QString::fromStdString(each.string()));
        requireOurs(QString::fromStdString(each.string()), isSafeAncestor(status));
        std::error_code error;
        if (S_ISLNK(status.st_mode))
            requireSafePath(each.parent_path() / std::filesystem::read_symlink(each, error));
    }
}

} // namespace

void makePrivateFolder(const QString& path)
{
    // Failures are ignored: the folder usually exists, and requirePrivateFolder() checks the result.
    for (qsizetype slash = path.indexOf(u'/', 1); slash > 0; slash = path.indexOf(u'/', slash + 1))
        ::mkdir(path.first(slash).toUtf8().constData(), 0755);
    ::mkdir(path.toUtf8().constData(), S_IRWXU);
}

void requirePrivateFolder(const QString& path)
{
    struct stat status {};
    if (::lstat(path.toUtf8().constData(), &status) != 0)
        throw FileError(errno, path);
    if (!S_ISDIR(status.st_mode))
        throw FileError(ENOTDIR, path);
    requireOurs(path, status.st_uid == ::geteuid() && (status.st_mode & 0777) == S_IRWXU);
    requireSafePath(std::filesystem::path(path.toStdString()).parent_path());
}

void removeOldBatchFiles(FileManager& files, const QString& folder)
{
    try {
        requirePrivateFolder(folder);
        struct Batch {
            qint64 lastChange = 0;
            QStringList paths;
        };
        QHash<QString, Batch> batches;
        for (const DirectoryEntry& entry : files.list(folder, HiddenEntries::include)) {
            const QString id = batchId(entry.name);
            const QString path = folder + u'/' + entry.name;
            const auto status = files.status(path);
            if (id.isEmpty() || !status)
                continue;
            Batch& batch = batches[id];
            batch.lastChange = std::max(batch.lastChange, status->modificationTime);
            batch.paths.append(path);
        }
        for (const Batch& batch : std::as_const(batches)) {
            if (std::time(nullptr) - batch.lastChange < kMaxAge)
                continue;
            for (const QString& path : batch.paths)
                files.remove(path);
        }
    } catch (const FileError&) {
        // Stale files only take space. The next start tries again.
        return;
    }
}

} // namespace orvanlite::platform
