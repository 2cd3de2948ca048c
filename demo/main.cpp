#include "catalogue/PluginDatabase.h"
#include "demo/BundleWriter.h"
#include "demo/DemoAppearance.h"
#include "demo/Looks.h"
#include "demo/MacLook.h"
#include "demo/PluginLibrary.h"
#include "demo/SecondStart.h"
#include "demo/UpdateServer.h"
#include "demo/Walk.h"
#include "model/Console.h"
#include "platform/Defaults.h"
#include "platform/FileManager.h"
#include "platform/FullDiskAccess.h"
#include "platform/MainBundle.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "profiles/ProfileManager.h"
#include "records/ActivityLogManager.h"
#include "shell/app/AppDelegate.h"
#include "shell/app/MainWindow.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/updates/UpdateChecker.h"
#include "uad/UADCleanupManager.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QSettings>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;
using namespace orvanlite;

namespace {

/// Exists in every sandbox created by the demo, which therefore never clears a foreign folder.
constexpr char kMarker[] = ".orvanlite-demo-sandbox";

[[noreturn]] void fail(const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    std::exit(1);
}

/// Creates a stand-in for a program that scripts start.
void addTool(const QString& path, const QByteArray& script)
{
    QFile tool(path);
    if (!QDir().mkpath(path.first(path.lastIndexOf(u'/'))) || !tool.open(QIODevice::WriteOnly) ||
        tool.write("#!/bin/sh\n" + script + '\n') < 0 ||
        !tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
        fail(u"A stand-in cannot be made: "_s + tool.fileName());
}

/// A new sandbox with the plugin library and stand-ins for the tools that scripts must not reach.
platform::SystemLayout makeSandbox(const QString& folder)
{
    const QString root = folder + u"/root"_s;
    const QString marker = root + u'/' + QString::fromLatin1(kMarker);
    if (QDir(root).exists() && !QDir(root).isEmpty()) {
        if (!QFile::exists(marker))
            fail(root + u" is not a sandbox of the demo: it is left alone."_s);
        QDir(root).removeRecursively();
    }
    QFile markerFile(marker);
    if (!QDir().mkpath(root) || !markerFile.open(QIODevice::WriteOnly))
        fail(u"The sandbox cannot be made in "_s + root);
    const platform::SystemLayout layout = platform::SystemLayout::sandbox(QDir(root).canonicalPath());
    demo::makePluginLibrary(layout);
    addTool(layout.toolOverrides + u"/killall"_s, "exit 0");
    addTool(layout.openTool(), "echo \"$*\" >> \"$(dirname \"$0\")/opened.log\"");
    return layout;
}

/// Opens nothing and logs URLs to the same file as the stand-in for folders. Starts no helper agent: the
/// bundle's agent does not know the sandbox.
class DemoWorkspace final : public platform::Workspace {
public:
    explicit DemoWorkspace(const platform::SystemLayout& layout)
        : m_log(layout.openTool().section(u'/', 0, -2) + u"/opened.log"_s)
    {}
    bool open(const QUrl& url) override
    {
        QFile log(m_log);
        return log.open(QIODevice::Append) && log.write(url.toEncoded() + '\n') > 0;
    }
    [[nodiscard]] std::vector<platform::RunningApplication> runningApplications() const override
    {
        return {};
    }
    void openApplication(const QString& bundlePath) override
    {
        printLine(u"The demo does not start "_s + bundlePath);
    }
    void terminate(const platform::RunningApplication& /*application*/) override {}

private:
    QString m_log;
};

platform::Platform withDemoParts(const platform::Platform& platform, platform::Workspace& workspace,
                                 platform::Appearance& appearance, platform::MainBundle& bundle)
{
    return {platform.layout,
            platform.files,
            platform.scripts,
            platform.processes,
            platform.defaults,
            platform.notifications,
            platform.loginItems,
            workspace,
            bundle,
            appearance,
            platform.userNotifications,
            platform.clock};
}

/// Installs two plugins and starts the application again.
bool startAgain(const platform::Platform& platform, const SharedObjects& shared,
                demo::DemoAppearance& appearance, const QString& output)
{
    const QString added = QString::fromUtf16(demo::SecondStart::kAdded);
    const QString leftOut = QString::fromUtf16(demo::SecondStart::kLeftOut);
    demo::BundleWriter writer(platform.layout);
    for (const QString& name : {added, leftOut})
        writer.write({.path = platform.layout.system(u"/Library/Audio/Plug-Ins/VST3/") + name + u".vst3"_s,
                      .identifier = u"com.lumivale.new"_s});
    AppDelegate again(platform, shared);
    again.applicationDidFinishLaunching();
    return demo::SecondStart(*again.window(), appearance, output).run([&] {
        const ProfileManager saved(platform); // reads the file
        return saved.profiles->size() == 2 &&
               std::all_of(saved.profiles->begin(), saved.profiles->end(), [&](const PluginProfile& profile) {
                   const auto key = [](const QString& name) { return pluginKey(name, PluginFormat::vst3); };
                   return profile.enabledPlugins.contains(key(added)) &&
                          profile.allPluginKeys.contains(key(leftOut)) &&
                          !profile.enabledPlugins.contains(key(leftOut));
               });
    });
}

} // namespace

/// The real application on a sample library in a sandbox. Asks for no password: commands run without
/// elevation.
int main(int argc, char** argv)
{
    const bool isMac = std::any_of(argv, argv + argc, [](const char* each) { return each == "--mac"sv; });
    if (isMac)
        demo::useMacResolution();
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Orvanlite"_s);
    QCommandLineParser options;
    options.setApplicationDescription(u"Opens Orvanlite on a sample plugin library in a sandbox."_s);
    options.addHelpOption();
    const QCommandLineOption walks(u"walk"_s, u"Walk through the main job, leave screenshots, and end."_s);
    const QCommandLineOption folder(u"folder"_s, u"Where the sandbox and the screenshots lie."_s, u"folder"_s,
                                    QCoreApplication::applicationDirPath() + u"/demo"_s);
    const QCommandLineOption dark(u"dark"_s, u"Start in dark colours."_s);
    const QCommandLineOption onboarding(u"onboarding"_s, u"Show the sheet of the first start."_s);
    const QCommandLineOption looks(u"looks"_s, u"Leave pictures of every region, and end."_s);
    const QCommandLineOption mac(u"mac"_s, u"Use a Mac's palette, font sizes and accent colour."_s);
    options.addOptions({walks, looks, onboarding, folder, dark, mac});
    options.process(application);
    if (isMac)
        demo::takeOverMacTheme(options.isSet(dark));

    const QString output = QDir(options.value(folder)).absolutePath();
    QDir().mkpath(output);
    const platform::SystemLayout layout = makeSandbox(output);
    const auto services = platform::makePlatformServices(layout, platform::Elevation::none);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       layout.configuration); // of file dialogs
    demo::DemoAppearance appearance(options.isSet(dark) ? std::optional(true) : std::nullopt);
    if (isMac)
        appearance.setAccent(platform::Rgb{0, 122.0 / 255, 1});
    // The demo is located beside the application bundle, not inside it.
    platform::MainBundle bundle(services->platform().files,
                                QCoreApplication::applicationDirPath() +
                                    u"/Orvanlite.app/Contents/MacOS/plugin-manager"_s);
    DemoWorkspace workspace(layout);
    const platform::Platform platform = withDemoParts(services->platform(), workspace, appearance, bundle);
    const auto diskAccess = platform::makeFullDiskAccess(platform.layout);
    // The screenshots show the update banner, with the demo's own service; the walk runs without it.
    std::optional<demo::UpdateServer> updateServer;
    if (options.isSet(looks))
        updateServer.emplace();
    UpdateChecker updates(platform, updateServer ? updateServer->service() : UpdateService::ofThisBuild());
    const SharedObjects shared{PluginDatabase::shared(platform),
                               ActivityLogManager::shared(platform),
                               ProgressWindowManager::shared(platform),
                               UADCleanupManager::shared(platform, PluginDatabase::shared(platform)),
                               updates,
                               *diskAccess};
    platform.defaults.standard().setValue(u"onboardingComplete"_s, !options.isSet(onboarding));
    AppDelegate delegate(platform, shared);
    delegate.applicationDidFinishLaunching();
    if (options.isSet(looks))
        return demo::Looks(*delegate.window(), platform, appearance, output, isMac).run() ? 0 : 1;
    if (!options.isSet(walks))
        return QApplication::exec();
    // Slows down each move: otherwise the progress panel is gone before the screenshot.
    addTool(layout.toolOverrides + u"/mv"_s, R"(sleep 0.01; exec /bin/mv "$@")");
    printLine(u"Walking through the application in "_s + layout.root);
    const bool walked = demo::Walk(*delegate.window(), ProgressWindowManager::shared(platform),
                                   shared.activityLog, shared.uadCleanup, appearance, layout, output)
                            .run();
    delegate.window()->close();
    const bool startedAgain = startAgain(platform, shared, appearance, output);
    printLine(walked && startedAgain ? u"All steps came out right."_s : u"Some steps FAILED."_s);
    return walked && startedAgain ? 0 : 1;
}
