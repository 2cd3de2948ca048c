#include "platform/apple/AppleFileManager.h"

#include "platform/Platform.h"
#include "platform/ProcessLauncher.h"
#include "platform/posix/DetachedLauncher.h"

#include <sys/stat.h>

#include <QStringList>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

AppleFileManager::AppleFileManager(ProcessLauncher& processes, const SystemLayout& layout)
    : m_processes(processes)
    , m_chflags(layout.chflags())
{
    if (!PosixFileManager::exists(m_chflags))
        m_chflags = u"/usr/bin/chflags"_s; // its location on current systems
}

void AppleFileManager::setHidden(const QString& path) { m_processes.start(m_chflags, {u"hidden"_s, path}); }

void AppleFileManager::removeMarkedAsHidden(const QString& folder, bool /*hasDotHidden*/,
                                            std::vector<DirectoryEntry>& entries) const
{
    const QByteArray prefix = folder.toUtf8() + '/';
    std::erase_if(entries, [&](const DirectoryEntry& entry) {
        struct stat information {};
        const QByteArray path = prefix + entry.name.toUtf8();
        return ::lstat(path.constData(), &information) == 0 && (information.st_flags & UF_HIDDEN) != 0;
    });
}

std::unique_ptr<FileManager> makeFileManager(const SystemLayout& layout)
{
    static DetachedLauncher launcher; // stateless
    return std::make_unique<AppleFileManager>(launcher, layout);
}

} // namespace orvanlite::platform
