#include "platform/MainBundle.h"
#include "platform/Platform.h"
#include "platform/apple/AppleAppearance.h"
#include "platform/apple/AppleDefaults.h"
#include "platform/apple/AppleDiskAccess.h"
#include "platform/apple/AppleFileManager.h"
#include "platform/apple/AppleLoginItemService.h"
#include "platform/apple/AppleNotificationCenter.h"
#include "platform/apple/AppleUserNotifications.h"
#include "platform/apple/AppleWorkspace.h"
#include "platform/freedesktop/FreedesktopDefaults.h"
#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "platform/posix/ChildScriptRunner.h"
#include "platform/posix/DetachedLauncher.h"
#include "platform/posix/PrivateFolder.h"
#include "platform/posix/SystemClock.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<ScriptRunner> makeScriptRunner(const SystemLayout& layout, Elevation elevation,
                                               const MainBundle& bundle)
{
    // The system's script service always asks for the password and supports neither a sandbox's home folder
    // nor its tool overrides.
    if (elevation == Elevation::none)
        return std::make_unique<FreedesktopScriptRunner>(layout, elevation);
    return std::make_unique<ChildScriptRunner>(
        bundle.bundlePath() + u"/Contents/Helpers/Orvanlite.app/Contents/MacOS/orvanlite-script"_s);
}

std::unique_ptr<DefaultsStore> makeDefaults(const SystemLayout& layout)
{
    // NSUserDefaults cannot be redirected into a sandbox.
    if (layout.isSandbox())
        return std::make_unique<FreedesktopDefaultsStore>(layout);
    return std::make_unique<AppleDefaultsStore>();
}

class AppleServices final : public PlatformServices {
public:
    AppleServices(SystemLayout layout, Elevation elevation)
        : m_layout(std::move(layout))
        , m_scripts(makeScriptRunner(m_layout, elevation, m_mainBundle))
    {
        makePrivateFolder(m_layout.temporary); // for a sandbox; the system's exists
        if (elevation == Elevation::ask)       // the agent starts no batches
            removeOldBatchFiles(m_files, m_layout.temporary);
    }

    [[nodiscard]] Platform platform() override
    {
        return {m_layout,     m_files,     *m_scripts,   m_launcher,   *m_defaults,         m_notifications,
                m_loginItems, m_workspace, m_mainBundle, m_appearance, m_userNotifications, m_clock};
    }

private:
    SystemLayout m_layout;
    DetachedLauncher m_launcher;
    AppleFileManager m_files{m_launcher, m_layout};
    MainBundle m_mainBundle{m_files, QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath()};
    std::unique_ptr<DefaultsStore> m_defaults = makeDefaults(m_layout);
    AppleNotificationCenter m_notifications;
    AppleLoginItemService m_loginItems;
    AppleWorkspace m_workspace;
    AppleAppearance m_appearance;
    AppleUserNotifications m_userNotifications;
    SystemClock m_clock;
    std::unique_ptr<ScriptRunner> m_scripts;
};

} // namespace

std::unique_ptr<PlatformServices> makePlatformServices(SystemLayout layout, Elevation elevation)
{
    return std::make_unique<AppleServices>(std::move(layout), elevation);
}

std::unique_ptr<FullDiskAccess> makeFullDiskAccess(const SystemLayout& layout)
{
    return std::make_unique<AppleDiskAccess>(layout);
}

} // namespace orvanlite::platform
