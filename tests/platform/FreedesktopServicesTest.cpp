#include "platform/OnlyProcess.h"
#include "platform/freedesktop/FreedesktopDefaults.h"
#include "platform/freedesktop/FreedesktopDiskAccess.h"
#include "platform/freedesktop/FreedesktopLoginItemService.h"
#include "platform/freedesktop/FreedesktopWorkspace.h"
#include "platform/posix/DetachedLauncher.h"
#include "platform/posix/PrivateFolder.h"
#include "support/Fakes.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <array>
#include <csignal>

namespace orvanlite::test {

using namespace platform;

namespace {

constexpr const char* kFolderVariables[] = {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                                            "XDG_RUNTIME_DIR"};
const QString kAgent = u"com.yourcompany.Orvanlite.helper-agent"_s;

class ServicesTest : public testing::Test {
protected:
    TempRoot root;
    SystemLayout layout = root.layout();
    FreedesktopFileManager files;
};

} // namespace

TEST_F(ServicesTest, DefaultsAreSharedThroughAFile)
{
    FreedesktopDefaultsStore store(layout);
    Defaults* suite = store.suite(u"com.yourcompany.Orvanlite"_s);
    ASSERT_NE(suite, nullptr);
    EXPECT_EQ(store.suite(u"com.yourcompany.Orvanlite"_s), suite);
    EXPECT_NE(store.suite(u"other"_s), suite);
    const QStringView file = u"/Users/tester/.config/Orvanlite/com.yourcompany.Orvanlite.ini";
    EXPECT_FALSE(suite->value(u"enabledPluginCount"_s).isValid());
    suite->setValue(u"enabledPluginCount"_s, 41);
    EXPECT_EQ(root.content(file), "[General]\nenabledPluginCount=41\n");
    // Another process writes the value that is set next.
    root.addFile(file, "[General]\nenabledPluginCount=1042\n; kept while nothing is written\n");
    EXPECT_EQ(suite->value(u"enabledPluginCount"_s).toInt(), 1042);
    suite->setValue(u"enabledPluginCount"_s, 1042);
    EXPECT_TRUE(root.content(file).contains("; kept"));

    const QVariantMap values{{u"onboardingComplete"_s, u"true"_s},
                             {u"text"_s, u"a, \"ü\"; \\n\n%"_s},
                             {u"frame"_s, QByteArray("\0\xff\n", 3)}};
    for (auto each = values.cbegin(); each != values.cend(); ++each)
        store.standard().setValue(each.key(), each.value());
    EXPECT_TRUE(root.exists(u"/Users/tester/.config/Orvanlite/defaults.ini"));
    FreedesktopDefaultsStore again(layout);
    for (auto each = values.cbegin(); each != values.cend(); ++each)
        EXPECT_EQ(again.standard().value(each.key()), each.value());

    files.remove(layout.configuration);
    root.addFile(u"/Users/tester/.config", "not a folder");
    FreedesktopDefaultsStore unusable(layout);
    EXPECT_EQ(unusable.suite(u"../x"_s), nullptr);
    EXPECT_EQ(unusable.suite(u"com.yourcompany.Orvanlite"_s), nullptr);
    unusable.standard().setValue(u"onboardingComplete"_s, true);
    EXPECT_EQ(root.content(u"/Users/tester/.config"), "not a folder");
}

TEST_F(ServicesTest, LoginItemIsAnAutostartEntry)
{
    FreedesktopLoginItemService items(files, layout);
    const QString bundle = root.at(u"/A $b/Helper.app");
    root.addBundle(u"/A $b/Helper.app", infoPlist({{u"CFBundleExecutable"_s, u"Helper"_s}}), true);
    const QStringView entry =
        u"/Users/tester/.config/autostart/com.yourcompany.Orvanlite.helper-agent.desktop";
    EXPECT_EQ(items.status(kAgent), LoginItemStatus::notRegistered);
    EXPECT_THROW(items.unregisterItem(kAgent), FileError);
    EXPECT_THROW(items.registerItem(kAgent, root.at(u"/None.app")), FileError);
    EXPECT_EQ(items.status(kAgent), LoginItemStatus::notRegistered);
    items.registerItem(kAgent, bundle);
    EXPECT_EQ(items.status(kAgent), LoginItemStatus::enabled);
    ASSERT_TRUE(QFile::rename(bundle, bundle + u".gone"_s));
    EXPECT_EQ(items.status(kAgent), LoginItemStatus::notFound);
    ASSERT_TRUE(QFile::rename(bundle + u".gone"_s, bundle));
    EXPECT_TRUE(root.content(entry).startsWith("[Desktop Entry]\nType=Application\n"));
    EXPECT_TRUE(root.content(entry).contains("\nExec=\"" + root.path().toUtf8() +
                                             "/A \\\\$b/Helper.app/Contents/MacOS/Helper\"\n"));
    for (const char* off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        root.addFile(entry, QByteArray("[Desktop Entry]\nExec=x\n") + off);
        EXPECT_EQ(items.status(kAgent), LoginItemStatus::requiresApproval) << off;
    }
    items.unregisterItem(kAgent);
    EXPECT_FALSE(root.exists(entry));
    EXPECT_EQ(desktopEntryExec(u"/a b/\"`\\%"_s), uR"("/a b/\\"\\`\\\\%%")"_s);
}

TEST_F(ServicesTest, DetectsThePasswordPrompt)
{
    const QByteArray path = qgetenv("PATH");
    const QString tools = root.at(u"/tools");
    root.addScript(u"/tools/pkexec", {});
    const uid_t own = geteuid();
    const std::tuple<QByteArray, bool, bool, uid_t, bool> rows[] = {
        {"bash", true, false, own, true},
        {"/usr/lib/polkit-gnome/polkit-gnome-authentication-agent-1", false, true, own, true},
        {"lxqt-policykit-agent", false, true, own, true},
        {"/usr/bin/gnome-shell", false, true, own, true},
        {"/usr/bin/gnome-shell", false, true, 54321, false}, // of the login screen
        {"lxqt-policykit-agent", false, false, own, false},
        {"/usr/lib/polkit-1/polkitd", false, true, own, false},
        {"/polkit/bash", false, true, own, false},
        {"", false, true, own, false}, // a kernel thread
    };
    root.addFile(u"/proc/self/cmdline", "polkit-agent"); // not a process
    for (const auto& [process, isRoot, hasTool, owner, wanted] : rows) {
        qputenv("PATH", hasTool ? tools.toUtf8() : root.at(u"/none").toUtf8());
        root.addFile(u"/proc/42/cmdline", process + '\0' + "polkit-argument" + '\0');
        if (::chown(root.at(u"/proc/42").toUtf8().constData(), owner, getegid()) != 0)
            continue; // only root can
        EXPECT_EQ(FreedesktopDiskAccess(isRoot, root.at(u"/proc")).isGranted(), wanted)
            << process.constData();
    }
    qputenv("PATH", path);
}

TEST_F(ServicesTest, OpensBundlesByTheirExecutable)
{
    const auto named = [](const QString& name) { return infoPlist({{u"CFBundleExecutable"_s, name}}); };
    const std::tuple<QString, QByteArray, QStringList, QString> rows[] = {
        {u"/Named.app"_s, named(u"two"_s), {u"one"_s, u"two"_s}, u"two"_s},
        {u"/The only one.app"_s, infoPlist({}), {u"one"_s}, u"one"_s},
        {u"/No list of properties.app"_s, {}, {u"one"_s}, u"one"_s},
        {u"/One of two.app"_s, infoPlist({}), {u"one"_s, u"two"_s}, {}},
        {u"/Named and missing.app"_s, named(u"x"_s), {u"one"_s}, {}},
        {u"/Named outside.app"_s, named(u"../MacOS/one"_s), {u"one"_s}, {}},
    };
    RecordingLauncher launcher;
    FreedesktopWorkspace workspace(files, launcher);
    for (const auto& [bundle, plist, executables, wanted] : rows) {
        const QString folder = bundle + u"/Contents/MacOS/"_s;
        root.addBundle(bundle, plist);
        for (const QString& executable : executables)
            root.addFile(folder + executable);
        launcher.starts.clear();
        workspace.openApplication(root.at(bundle));
        const QString started = launcher.starts.empty() ? QString() : launcher.starts.front().program;
        EXPECT_EQ(started, wanted.isEmpty() ? QString() : root.at(folder + wanted)) << bundle.toStdString();
    }
    launcher.fails = true;
    workspace.openApplication(root.at(u"/Named.app"));
    EXPECT_FALSE(workspace.open(QUrl(u"https://example.com"_s)));
    launcher.fails = false;
    launcher.starts.clear();
    EXPECT_FALSE(workspace.open(QUrl()));
    EXPECT_TRUE(workspace.open(QUrl(u"https://example.com/ü?q=a b"_s)));
    EXPECT_TRUE(workspace.open(QUrl::fromLocalFile(u"/r/50% ü.pdf"_s)));
    const std::vector<RecordingLauncher::Start> wanted{
        {u"xdg-open"_s, {u"https://example.com/%C3%BC?q=a%20b"_s}}, {u"xdg-open"_s, {u"/r/50% ü.pdf"_s}}};
    EXPECT_EQ(launcher.starts, wanted);
}

TEST_F(ServicesTest, FindsAndTerminatesRunningApplications)
{
    QProcess processes[2];
    const auto start = [&](QProcess& process, const QString& name, const QByteArray& plist) {
        const QString bundle = u'/' + name + u".app"_s;
        root.addBundle(bundle, plist);
        root.addFolder(bundle + u"/Contents/MacOS"_s);
        const QString executable = root.at(bundle + u"/Contents/MacOS/"_s + name);
        ASSERT_TRUE(QFile::copy(u"/bin/sleep"_s, executable));
        process.start(executable, {u"1000"_s});
        ASSERT_TRUE(process.waitForStarted());
    };
    start(processes[0], u"Agent"_s, infoPlist({{u"CFBundleIdentifier"_s, kAgent}}));
    start(processes[1], u"Nameless"_s, infoPlist({}));
    RecordingLauncher launcher;
    FreedesktopWorkspace workspace(files, launcher);
    std::vector<RunningApplication> ours = workspace.runningApplications();
    std::erase_if(ours,
                  [&](const RunningApplication& each) { return !each.bundlePath.startsWith(root.path()); });
    const RunningApplication agent{processes[0].processId(), kAgent, root.at(u"/Agent.app")};
    EXPECT_EQ(ours, std::vector{agent});
    // This process id belongs to another program by now.
    workspace.terminate({processes[1].processId(), kAgent, agent.bundlePath});
    for (const qint64 ownGroupOrAll : {0, -1})
        workspace.terminate({ownGroupOrAll, kAgent, {}});
    QFile::remove(agent.bundlePath + u"/Contents/MacOS/Agent"_s); // as an update does
    workspace.terminate(agent);
    EXPECT_TRUE(processes[0].waitForFinished());
    EXPECT_EQ(processes[0].exitCode(), SIGTERM);
    processes[1].kill();
    EXPECT_TRUE(processes[1].waitForFinished());
    EXPECT_EQ(processes[1].exitCode(), SIGKILL) << "not terminated before";
}

TEST_F(ServicesTest, StartsProgramsOrThrows)
{
    DetachedLauncher launcher;
    root.addScript(u"/run.sh", "printf '%s|' \"$@\" > \"$0.out\" && mv \"$0.out\" \"$0.done\"\n");
    launcher.start(root.at(u"/run.sh"), {u"a b"_s, u"'ü"_s, QString()});
    EXPECT_TRUE(waitFor([&] { return root.exists(u"/run.sh.done"); }));
    EXPECT_EQ(root.content(u"/run.sh.done"), "a b|'ü||");
    root.addFile(u"/plain");
    for (const auto& [program, code] :
         {std::pair(u"orvanlite-no-such-program"_s, ENOENT), {root.at(u"/plain"), EACCES}}) {
        try {
            launcher.start(program, {});
            ADD_FAILURE() << program.toStdString();
        } catch (const FileError& error) {
            EXPECT_EQ(error.code, code) << program.toStdString();
        }
    }
}

TEST(Layout, FollowsTheEnvironment)
{
    const TempRoot root;
    std::vector<QByteArray> before;
    for (const char* name : kFolderVariables) {
        before.push_back(qgetenv(name));
        qunsetenv(name);
    }
    qputenv("HOME", root.at(u"/Users/tester/").toUtf8());
    qputenv("XDG_CACHE_HOME", "/cache/");
    qputenv("XDG_DATA_HOME", "relative");
    root.addFile(u"/Users/tester/.config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
    const SystemLayout layout = SystemLayout::ofThisMachine();
    root.addFolder(u"/run");
    qputenv("XDG_RUNTIME_DIR", root.at(u"/run").toUtf8());
    QStringList ofSession;
    for (const mode_t mode : {0700, 0755}) {
        root.setMode(u"/run", mode);
        ofSession.append(SystemLayout::ofThisMachine().temporary);
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i].isNull())
            qunsetenv(kFolderVariables[i]);
        else
            qputenv(kFolderVariables[i], before[i]);
    }
    EXPECT_FALSE(layout.isSandbox());
    EXPECT_EQ(layout.home, root.at(u"/Users/tester"));
    EXPECT_EQ(layout.applicationFolder(), root.at(u"/Users/tester/.local/share/Orvanlite"));
    EXPECT_EQ(layout.configuration, root.at(u"/Users/tester/.config"));
    EXPECT_EQ(layout.temporary, u"/cache/Orvanlite/tmp"_s);
    EXPECT_EQ(ofSession[0], root.at(u"/run/Orvanlite/tmp"));
    EXPECT_EQ(ofSession[1], u"/cache/Orvanlite/tmp"_s) << "others can access the folder of the session";
    EXPECT_EQ(layout.desktop, root.at(u"/Users/tester/Schreibtisch"));
    EXPECT_EQ(layout.centralDisabledDirectory(), u"/Library/Audio/Plug-Ins/Disabled"_s);
    EXPECT_TRUE(layout.isInSystemLibrary(u"/Library Backup/x"_s));
    EXPECT_FALSE(layout.isInSystemLibrary(root.at(u"/Library/x")));
    EXPECT_TRUE(root.layout().isInSystemLibrary(root.at(u"/Library/x")));
    EXPECT_EQ(root.layout().chflags(), u"/bin/chflags"_s) << "a sandbox uses the real one";
}

TEST(Layout, HasNoUserFoldersWithoutAHomeFolder)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can become an unknown user";
    const auto check = [] {
        for (const char* name : kFolderVariables)
            qunsetenv(name);
        constexpr uid_t kUnknown = 54321;
        if (setuid(kUnknown) != 0)
            ::_exit(2);
        SystemLayout layout = SystemLayout::ofThisMachine();
        layout.rootRunner.clear(); // the system's
        ::_exit(layout == SystemLayout() ? 0 : 1);
    };
    EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(SystemLayout().aaxUnusedDirectoryOfUser(), QString()) << "not the system's";
}

TEST_F(ServicesTest, AreBuiltTogether)
{
    const QString left = layout.temporary.sliced(root.path().size()) + u"/orvanlite_batch_1.sh"_s;
    makePrivateFolder(layout.temporary);
    SystemLayout ofSession = layout; // earlier runs were without the folder of the session
    ofSession.temporary = root.at(u"/run/Orvanlite/tmp");
    for (const auto& [now, isHelper] : {std::pair(layout, true), {layout, false}, {ofSession, false}}) {
        root.addFile(left);
        const std::array longAgo{timespec{1, 0}, timespec{1, 0}};
        ::utimensat(AT_FDCWD, root.at(left).toUtf8().constData(), longAgo.data(), 0);
        EXPECT_NE(makePlatformServices(now, isHelper ? Elevation::none : Elevation::ask), nullptr);
        EXPECT_EQ(root.exists(left), isHelper) << "the helper agent has no batches";
    }
    QDir().rmdir(layout.temporary);
    const auto services = makePlatformServices(layout, Elevation::none);
    const Platform platform = services->platform();
    EXPECT_EQ(platform.layout, layout);
    EXPECT_EQ(statusOf(layout.temporary).st_mode & 0777, 0700U);
    EXPECT_EQ(platform.mainBundle.bundlePath(),
              QFileInfo(QCoreApplication::applicationFilePath()).canonicalPath());
    runTask(platform.clock.sleepFor(std::chrono::milliseconds(-5)));
    runTask(platform.clock.sleepFor(std::chrono::milliseconds(5)));
}

TEST_F(ServicesTest, OneProcessHoldsALock)
{
    const QString lock = root.at(u"/lock");
    const auto isOnlyOne = [](const QString& file, uid_t user) {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit((user == ::geteuid() || ::setuid(user) == 0) && becomeOnlyProcess(file) ? 1 : 0);
        int status = 0;
        ::waitpid(child, &status, 0);
        return WEXITSTATUS(status) == 1;
    };
    root.setMode(u"", 0755);
    const uid_t other = ::geteuid() == 0 ? 4711 : ::geteuid(); // only root can become another
    EXPECT_TRUE(isOnlyOne(lock, ::geteuid()));
    EXPECT_TRUE(becomeOnlyProcess(lock)) << "the one before has ended";
    EXPECT_FALSE(isOnlyOne(lock, other));
    EXPECT_TRUE(isOnlyOne(root.at(u"/none/lock"), other)) << "better two than none";
}

TEST_F(ServicesTest, MainBundleFindsItsResources)
{
    root.addFile(u"/O.app/Contents/Resources/AppIcon.icns");
    const MainBundle bundle(files, root.at(u"/O.app/Contents/MacOS/O"));
    EXPECT_EQ(bundle.resource(u"AppIcon"_s, u"icns"_s), root.at(u"/O.app/Contents/Resources/AppIcon.icns"));
    EXPECT_EQ(bundle.resource(u"AppIcon"_s, u"png"_s), std::nullopt);
}

} // namespace orvanlite::test
