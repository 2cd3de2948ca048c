#include "shell/app/GUIApp.h"

#include "catalogue/PluginDatabase.h"
#include "platform/FullDiskAccess.h"
#include "platform/Platform.h"
#include "platform/SingleInstance.h"
#include "records/ActivityLogManager.h"
#include "shell/app/AppDelegate.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/updates/UpdateChecker.h"
#include "uad/UADCleanupManager.h"

#include <QApplication>

#include <cstdlib>

namespace orvanlite {

using namespace Qt::StringLiterals;

int runGui(int& argc, char** argv, const platform::SystemLayout& layout)
{
    // Before anything is read or created: an instance that already runs owns that data.
    if (!platform::becomeOnlyInstance(layout))
        return EXIT_SUCCESS;
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Orvanlite"_s);
    QApplication::setDesktopFileName(u"com.yourcompany.Orvanlite"_s);
    const auto services = platform::makePlatformServices(layout, platform::Elevation::ask);
    const platform::Platform platform = services->platform();
    const auto diskAccess = platform::makeFullDiskAccess(platform.layout);
    const SharedObjects shared{PluginDatabase::shared(platform),
                               ActivityLogManager::shared(platform),
                               ProgressWindowManager::shared(platform),
                               UADCleanupManager::shared(platform, PluginDatabase::shared(platform)),
                               UpdateChecker::shared(platform),
                               *diskAccess};
    AppDelegate delegate(platform, shared);
    QMetaObject::invokeMethod(&delegate, &AppDelegate::applicationDidFinishLaunching, Qt::QueuedConnection);
    platform::whenStartedAgain(layout, &delegate, [&delegate] { delegate.bringToFront(); });
    return QApplication::exec();
}

} // namespace orvanlite
