#include "catalogue/PluginDatabase.h"
#include "demo/DemoAppearance.h"
#include "demo/PluginLibrary.h"
#include "demo/Walk.h"
#include "model/Console.h"
#include "platform/Platform.h"
#include "records/ActivityLogManager.h"
#include "shell/AppDelegate.h"
#include "shell/MainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

using namespace Qt::StringLiterals;
using namespace orvanlite;

namespace {

/// An empty sandbox with the plugin library and stand-ins for the tools that a script must not reach.
platform::SystemLayout makeSandbox(const QString& folder)
{
    const QString root = folder + u"/root"_s;
    QDir(root).removeRecursively();
    QDir().mkpath(root);
    const platform::SystemLayout layout = platform::SystemLayout::sandbox(QDir(root).canonicalPath());
    demo::makePluginLibrary(layout);
    QDir().mkpath(layout.toolOverrides);
    QFile killall(layout.toolOverrides + u"/killall"_s);
    if (killall.open(QIODevice::WriteOnly)) {
        killall.write("#!/bin/sh\nexit 0\n");
        killall.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    return layout;
}

platform::Platform withAppearance(const platform::Platform& platform, platform::Appearance& appearance)
{
    return {platform.layout,
            platform.files,
            platform.scripts,
            platform.processes,
            platform.defaults,
            platform.notifications,
            platform.loginItems,
            platform.workspace,
            platform.mainBundle,
            appearance,
            platform.userNotifications,
            platform.clock};
}

} // namespace

/// The real application on a sample library in a sandbox. No password is asked: the commands run as they are.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Orvanlite"_s);
    QCommandLineParser options;
    options.setApplicationDescription(u"Opens Orvanlite on a sample plugin library in a sandbox."_s);
    options.addHelpOption();
    const QCommandLineOption walks(u"walk"_s, u"Walk through the main job, leave screenshots, and end."_s);
    const QCommandLineOption folder(u"folder"_s, u"Where the sandbox and the screenshots lie."_s, u"folder"_s,
                                    QCoreApplication::applicationDirPath() + u"/demo"_s);
    const QCommandLineOption dark(u"dark"_s, u"Start in dark colours."_s);
    options.addOptions({walks, folder, dark});
    options.process(application);

    const QString output = QDir(options.value(folder)).absolutePath();
    QDir().mkpath(output);
    const platform::SystemLayout layout = makeSandbox(output);
    const auto services = platform::makePlatformServices(layout, platform::Elevation::none);
    demo::DemoAppearance appearance(options.isSet(dark) ? std::optional(true) : std::nullopt);
    const platform::Platform platform = withAppearance(services->platform(), appearance);
    AppDelegate delegate(platform, PluginDatabase::shared(platform), ActivityLogManager::shared(platform));
    delegate.applicationDidFinishLaunching();
    if (!options.isSet(walks))
        return QApplication::exec();
    printLine(u"Walking through the application in "_s + layout.root);
    return demo::Walk(*delegate.window(), appearance, layout, output).run() ? 0 : 1;
}
