#include "platform/posix/PrivateFolder.h"

#include "platform/FileManager.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QHash>

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kOldAge = 3600; // seconds
constexpr QStringView kScript = u"orvanlite_batch_";
constexpr QStringView kScriptEnd = u".sh";
constexpr QStringView kCounter = u"orvanlite_progress_";
constexpr QStringView kCounterEnd = u".txt";

/// The part of a batch file's name that its script and its counter have in common; empty for other names.
QString batchId(const QString& name)
{
    if (name.startsWith(kScript) && name.endsWith(kScriptEnd))
        return name.sliced(kScript.size()).chopped(kScriptEnd.size());
    if (name.startsWith(kCounter) && name.endsWith(kCounterEnd))
        return name.sliced(kCounter.size()).chopped(kCounterEnd.size());
    return {};
}

} // namespace

void makePrivateFolder(const QString& path)
{
    // An mkdir that fails, mostly because the folder exists, is no failure yet.
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
    if (status.st_uid != ::geteuid() || (status.st_mode & 07777) != S_IRWXU)
        throw FileError(EPERM, path, u"Other users have access to the folder: "_s + path);
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
            if (std::time(nullptr) - batch.lastChange < kOldAge)
                continue;
            for (const QString& path : batch.paths)
                files.remove(path);
        }
    } catch (const FileError&) {
        // Leftovers take some space, nothing else. The next start tries again.
        return;
    }
}

} // namespace orvanlite::platform
