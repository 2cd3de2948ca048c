#include "shell/sidebar/MenuBarLoginItem.h"

#include "model/Console.h"
#include "operations/Detach.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/LoginItemService.h"
#include "platform/MainBundle.h"
#include "platform/Workspace.h"

#include <QDir>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

const QString kHelperIdentifier = u"com.yourcompany.Orvanlite.helper-agent"_s;
const QString kHelperPath = u"/Contents/Library/LoginItems/OrvanliteHelper.app"_s;
/// Gives running helpers time to terminate.
constexpr std::chrono::milliseconds kLaunchDelay(500);

std::vector<platform::RunningApplication> runningHelpers(const platform::Workspace& workspace)
{
    std::vector<platform::RunningApplication> running = workspace.runningApplications();
    std::erase_if(running, [](const platform::RunningApplication& each) {
        return each.bundleIdentifier != kHelperIdentifier;
    });
    return running;
}

QCoro::Task<> openLater(platform::Platform platform, QString path)
{
    co_await platform.clock.sleepFor(kLaunchDelay);
    platform.workspace.openApplication(path);
}

} // namespace

bool MenuBarLoginItem::isEnabled() const
{
    return m_platform.loginItems.status(kHelperIdentifier) == platform::LoginItemStatus::enabled;
}

void MenuBarLoginItem::setEnabled(bool enabled)
{
    try {
        if (enabled)
            m_platform.loginItems.registerItem(kHelperIdentifier, helperPath());
        else
            m_platform.loginItems.unregisterItem(kHelperIdentifier);
    } catch (const platform::FileError& error) {
        printLine((enabled ? u"MenuBarLoginItem: Failed to register: "_s
                           : u"MenuBarLoginItem: Failed to unregister: "_s) +
                  error.message);
        return;
    }
    if (enabled)
        launchHelperNow();
    else
        terminateHelper();
}

void MenuBarLoginItem::launchHelperNow()
{
    const QString helper = helperPath();
    if (!m_platform.files.exists(helper))
        return;
    const auto running = runningHelpers(m_platform.workspace);
    if (running.size() == 1 && QDir::cleanPath(running.front().bundlePath) == QDir::cleanPath(helper))
        return;
    for (const platform::RunningApplication& each : running)
        m_platform.workspace.terminate(each);
    detach(openLater(m_platform, helper));
}

void MenuBarLoginItem::terminateHelper()
{
    for (const platform::RunningApplication& each : runningHelpers(m_platform.workspace))
        m_platform.workspace.terminate(each);
}

QString MenuBarLoginItem::helperPath() const { return m_platform.mainBundle.bundlePath() + kHelperPath; }

} // namespace orvanlite
