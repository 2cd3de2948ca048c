#include "platform/MainBundle.h"
#include "platform/Platform.h"
#include "platform/Utf8.h"
#include "platform/freedesktop/FreedesktopAppearance.h"
#include "platform/freedesktop/FreedesktopDefaults.h"
#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/freedesktop/FreedesktopLoginItemService.h"
#include "platform/freedesktop/FreedesktopNotificationCenter.h"
#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "platform/freedesktop/FreedesktopUserNotifications.h"
#include "platform/freedesktop/FreedesktopWorkspace.h"
#include "platform/freedesktop/SessionBus.h"
#include "platform/posix/DetachedLauncher.h"
#include "platform/posix/PrivateFolder.h"
#include "platform/posix/SystemClock.h"

#include <unistd.h>

#include <array>
#include <climits>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// With links resolved: the command on the PATH is a link into the bundle.
QString executablePath()
{
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink("/proc/self/exe", target.data(), target.size());
    return length > 0 ? fromUtf8({target.data(), length}) : QString();
}

class FreedesktopServices final : public PlatformServices {
public:
    FreedesktopServices(SystemLayout layout, Elevation elevation)
        : m_layout(std::move(layout))
        , m_scripts(m_layout, elevation)
        , m_defaults(m_layout)
        , m_notifications(m_bus)
        , m_loginItems(m_files, m_layout)
        , m_workspace(m_files, m_processes)
        , m_mainBundle(m_files, executablePath())
        , m_appearance(m_bus)
        , m_userNotifications(m_bus)
    {
        makePrivateFolder(m_layout.temporary);
        if (elevation != Elevation::ask)
            return; // the helper starts no batches
        removeOldBatchFiles(m_files, m_layout.temporary);
        // Used in sessions without a runtime folder, or with one that is mounted noexec.
        if (!m_layout.cache.isEmpty())
            removeOldBatchFiles(m_files, m_layout.cache + u"/Orvanlite/tmp"_s);
    }

    [[nodiscard]] Platform platform() override
    {
        return {m_layout,     m_files,     m_scripts,    m_processes,  m_defaults,          m_notifications,
                m_loginItems, m_workspace, m_mainBundle, m_appearance, m_userNotifications, m_clock};
    }

private:
    SystemLayout m_layout;
    FreedesktopFileManager m_files;
    SessionBus m_bus;
    FreedesktopScriptRunner m_scripts;
    DetachedLauncher m_processes;
    FreedesktopDefaultsStore m_defaults;
    FreedesktopNotificationCenter m_notifications;
    FreedesktopLoginItemService m_loginItems;
    FreedesktopWorkspace m_workspace;
    MainBundle m_mainBundle;
    FreedesktopAppearance m_appearance;
    FreedesktopUserNotifications m_userNotifications;
    SystemClock m_clock;
};

} // namespace

std::unique_ptr<PlatformServices> makePlatformServices(SystemLayout layout, Elevation elevation)
{
    return std::make_unique<FreedesktopServices>(std::move(layout), elevation);
}

} // namespace orvanlite::platform
