#include "platform/freedesktop/FreedesktopWorkspace.h"

#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/ProcessLauncher.h"
#include "platform/Utf8.h"
#include "platform/freedesktop/ApplicationBundle.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <csignal>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

const QString kProcesses = u"/proc"_s;

/// Path of the bundle "X.app" that a process of this user runs from; empty for other processes.
QString bundleOf(qint64 processId)
{
    const QByteArray folder = kProcesses.toUtf8() + '/' + QByteArray::number(processId);
    struct stat information {};
    if (::stat(folder.constData(), &information) != 0 || information.st_uid != ::getuid())
        return {};
    std::array<char, PATH_MAX> target{};
    const QByteArray link = folder + "/exe";
    const ssize_t length = ::readlink(link.constData(), target.data(), target.size());
    if (length <= 0)
        return {};
    const QString executable = fromUtf8({target.data(), length});
    constexpr QStringView inBundle = u"/Contents/MacOS";
    const QString parent = parentFolder(executable);
    if (!parent.endsWith(u".app/Contents/MacOS"))
        return {};
    return parent.chopped(inBundle.size());
}

std::vector<qint64> processIds(const FileManager& files)
{
    std::vector<qint64> ids;
    try {
        for (const DirectoryEntry& entry : files.list(kProcesses, HiddenEntries::skip)) {
            bool isNumber = false;
            const qint64 id = entry.name.toLongLong(&isNumber);
            if (isNumber)
                ids.push_back(id);
        }
    } catch (const FileError&) {
        ids.clear(); // no /proc
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

} // namespace

bool FreedesktopWorkspace::open(const QUrl& url)
{
    if (!url.isValid() || url.isEmpty())
        return false;
    try {
        const QString target = url.isLocalFile() ? url.toLocalFile() : QString::fromLatin1(url.toEncoded());
        m_launcher.start(u"xdg-open"_s, {target});
    } catch (const FileError&) {
        return false;
    }
    return true;
}

std::vector<RunningApplication> FreedesktopWorkspace::runningApplications() const
{
    std::vector<RunningApplication> running;
    for (const qint64 id : processIds(m_files)) {
        const QString bundle = bundleOf(id);
        if (bundle.isEmpty())
            continue;
        if (const auto identifier = bundleIdentifier(m_files, bundle))
            running.push_back({id, *identifier, bundle});
    }
    return running;
}

void FreedesktopWorkspace::openApplication(const QString& bundlePath)
{
    const auto executable = bundleExecutable(m_files, bundlePath);
    if (!executable)
        return;
    try {
        m_launcher.start(*executable, {});
    } catch (const FileError&) {
        return; // failures are not reported
    }
}

void FreedesktopWorkspace::terminate(const RunningApplication& application)
{
    // The process id may have been reused since the lookup.
    if (application.processId > 1 && !application.bundlePath.isEmpty() &&
        bundleOf(application.processId) == application.bundlePath)
        ::kill(static_cast<pid_t>(application.processId), SIGTERM);
}

} // namespace orvanlite::platform
