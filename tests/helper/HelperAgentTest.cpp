#include "shell/sidebar/MenuBarLoginItem.h"
#include "shell/sidebar/MenuBarSection.h"
#include "support/Fakes.h"
#include "support/PrivateBus.h"

#include <QAbstractButton>
#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <unistd.h>

namespace orvanlite::test {

using namespace platform;

namespace {

/// The real workspace, limited to applications in the root.
class RootedWorkspace final : public Workspace {
public:
    RootedWorkspace(Workspace& real, QString root)
        : m_real(real)
        , m_root(std::move(root))
    {}
    bool open(const QUrl& url) override { return m_real.open(url); }
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override
    {
        auto running = m_real.runningApplications();
        std::erase_if(running, [this](const auto& each) { return !each.bundlePath.startsWith(m_root); });
        return running;
    }
    void openApplication(const QString& bundlePath) override { m_real.openApplication(bundlePath); }
    void terminate(const RunningApplication& application) override
    {
        ++terminations;
        m_real.terminate(application);
    }
    int terminations = 0;

private:
    Workspace& m_real;
    QString m_root;
};

/// The application's side of real agents in a temporary root, on a private session bus.
class HelperTest : public testing::Test {
protected:
    HelperTest()
    {
        qputenv("ORV_SANDBOX_ROOT", root.path().toUtf8());
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
        addAgent(own);
    }
    ~HelperTest() override
    {
        for (const RunningApplication& each : workspace.runningApplications())
            workspace.terminate(each);
        waitFor([this] { return workspace.runningApplications().empty(); });
    }

    void addAgent(const QString& bundle) const
    {
        const QString contents = bundle + u"/Contents"_s;
        root.addFolder(contents + u"/MacOS"_s);
        const QString executable = root.at(contents + u"/MacOS/OrvanliteHelper"_s);
        ASSERT_TRUE(QFile::copy(QStringLiteral(ORV_HELPER_INFO_PLIST), root.at(contents + u"/Info.plist"_s)));
        ASSERT_TRUE(QFile::copy(QStringLiteral(ORV_SANDBOX_AGENT), executable));
    }
    [[nodiscard]] Platform with(Clock& clock)
    {
        return {real.layout,   real.files,         real.scripts,           real.processes,
                real.defaults, real.notifications, real.loginItems,        workspace,
                mainBundle,    real.appearance,    real.userNotifications, clock};
    }

    TempRoot root;
    PrivateBus bus;
    std::unique_ptr<PlatformServices> services = makePlatformServices(root.layout(), Elevation::none);
    Platform real = services->platform();
    const QString own = u"/Applications/Orvanlite.app/Contents/Library/LoginItems/OrvanliteHelper.app"_s;
    MainBundle mainBundle{real.files, root.at(u"/Applications/Orvanlite.app/Contents/MacOS/plugin-manager")};
    RootedWorkspace workspace{real.workspace, root.path()};
};

class FakeTray final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost)

public:
    bool hasHost = true;
    QStringList items;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service) { items.append(service); }
};

class HelperAgentTest : public HelperTest {
protected:
    static void SetUpTestSuite() { s_screen = std::make_unique<VirtualScreen>(); }
    static void TearDownTestSuite() { s_screen.reset(); }
    HelperAgentTest()
        : desktop(QDBusConnection::connectToBus(bus.address(), u"desktop"_s))
    {
        qputenv("QT_QPA_PLATFORM", "xcb");
        desktop.registerObject(u"/org/freedesktop/Notifications"_s, &messages,
                               QDBusConnection::ExportAllSlots);
        desktop.registerService(u"org.freedesktop.Notifications"_s);
        desktop.registerObject(u"/StatusNotifierWatcher"_s, &tray, QDBusConnection::ExportAllContents);
    }
    ~HelperAgentTest() override { QDBusConnection::disconnectFromBus(u"desktop"_s); }

    /// Calls the tray's item from another process, because the item may be waiting for the tray.
    QString call(const QStringList& arguments)
    {
        QProcess caller;
        caller.start(u"dbus-send"_s, QStringList{u"--bus="_s + bus.address(), u"--print-reply"_s,
                                                 u"--dest="_s + tray.items.value(0)} +
                                         arguments);
        EXPECT_TRUE(waitFor([&] { return caller.state() == QProcess::NotRunning; }));
        return QString::fromUtf8(caller.readAllStandardOutput());
    }
    QString menu()
    {
        return call({u"/MenuBar"_s, u"com.canonical.dbusmenu.GetLayout"_s, u"int32:0"_s, u"int32:-1"_s,
                     u"array:string:label"_s});
    }
    bool shows(const QString& text)
    {
        const QString quoted = u'"' + text + u'"';
        return waitFor([&] {
            return call({u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties.Get"_s,
                         u"string:org.kde.StatusNotifierItem"_s, u"string:ToolTip"_s})
                       .contains(quoted) &&
                   menu().contains(quoted);
        });
    }
    void publishCount(int enabled)
    {
        real.defaults.suite(u"com.yourcompany.Orvanlite"_s)->setValue(u"enabledPluginCount"_s, enabled);
        real.notifications.post(u"com.yourcompany.Orvanlite.pluginCountChanged"_s, {});
    }
    /// All messages so far, as soon as one of them names the plugin.
    QString messagesUntil(const QString& plugin)
    {
        QString all;
        EXPECT_TRUE(waitFor([&] {
            all.clear();
            for (const QStringList& each : std::as_const(messages.shown))
                all += each[1] + u": "_s + each[2] + u'\n';
            return all.contains(plugin);
        }));
        return all;
    }
    /// The last step of the agent's start.
    static bool isWatching(qint64 processId)
    {
        const QString folder = u"/proc/%1/fdinfo/"_s.arg(processId);
        for (const QString& each : QDir(folder).entryList(QDir::Files)) {
            QFile file(folder + each);
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains("inotify wd"))
                return true;
        }
        return false;
    }
    [[nodiscard]] QString executable() const { return root.at(own + u"/Contents/MacOS/OrvanliteHelper"_s); }

    static inline std::unique_ptr<VirtualScreen> s_screen;
    QDBusConnection desktop;
    FakeNotificationService messages;
    FakeTray tray;
};

class MenuBarLoginItemTest : public HelperTest {
protected:
    MenuBarLoginItemTest() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

    void start(const QString& bundle)
    {
        const std::size_t before = workspace.runningApplications().size();
        workspace.openApplication(root.at(bundle));
        ASSERT_TRUE(waitFor([&] { return workspace.runningApplications().size() > before; }));
    }

    FakeClock clock;
    MenuBarLoginItem item{with(clock)};
    const QString entry = u"/Users/tester/.config/autostart/com.yourcompany.Orvanlite.helper-agent.desktop"_s;
};

} // namespace

TEST_F(HelperAgentTest, CountsAndMonitorsWhileSwitchedOn)
{
    const QString library = u"/Library/Audio/Plug-Ins/"_s;
    root.addBundle(library + u"Disabled/VST3/Old.vst3"_s);
    root.addFolder(library + u"VST3"_s);
    for (const QString& link : {u"VST3/Cycle 1"_s, u"VST3/Cycle 2"_s})
        QFile::link(root.at(library + u"VST3"_s), root.at(library + link));
    MenuBarLoginItem item(with(real.clock));
    MenuBarSection section(item, nullptr);
    auto& launchAtLogin = *section.findChild<QAbstractButton*>(u"launchAtLoginSwitch"_s);
    publishCount(41);
    launchAtLogin.click();
    ASSERT_TRUE(launchAtLogin.isChecked());
    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().size() == 1; }));
    const RunningApplication agent = workspace.runningApplications().front();
    EXPECT_NE(::getsid(static_cast<pid_t>(agent.processId)), ::getsid(0))
        << "it would end with the application";

    ASSERT_TRUE(waitFor([&] { return isWatching(agent.processId); }));
    desktop.registerService(u"org.kde.StatusNotifierWatcher"_s); // a tray that starts after the agent
    ASSERT_TRUE(waitFor([this] { return !tray.items.empty(); }));
    EXPECT_TRUE(shows(u"41 plugins enabled"_s));
    publishCount(1);
    EXPECT_TRUE(shows(u"1 plugin enabled"_s));
    // A changed value without a notification is read with the next one, whatever that is about.
    real.defaults.suite(u"com.yourcompany.Orvanlite"_s)->setValue(u"enabledPluginCount"_s, 7);
    real.notifications.post(u"com.yourcompany.Orvanlite.appDidLaunch"_s, {{u"version"_s, u"1"_s}});
    EXPECT_TRUE(shows(u"7 plugins enabled"_s));
    QProcess second;
    second.start(executable(), {});
    EXPECT_TRUE(waitFor([&] { return second.state() == QProcess::NotRunning; }));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(workspace.runningApplications(), std::vector{agent});

    root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/Acme/Drums & Bass.clap");
    messagesUntil(u"New plugin found: Drums &amp; Bass (CLAP)"_s);
    for (const QString& name : {u"Zulu"_s, u"mike"_s, u"Lima"_s, u"Alpha"_s})
        root.addBundle(u"/Pack/"_s + name + u".clap"_s);
    ASSERT_TRUE(QDir().rename(root.at(u"/Pack"), root.at(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/Pack")));
    messagesUntil(u"4 new plugins found: Alpha (CLAP), Lima (CLAP), mike (CLAP) and 1 more"_s);
    // Enabled by the application, a container of plugins, not a plugin, and a new one.
    const QString off = root.at(library + u"Disabled/VST3/Old.vst3"_s);
    const QString on = root.at(library + u"VST3/Old.vst3"_s);
    ASSERT_TRUE(QDir().rename(off, on));
    root.addBundle(library + u"VST3/WaveShell1.vst3"_s);
    root.addFile(library + u"VST3/readme.txt"_s);
    root.addBundle(u"/Applications/Waves/Plug-Ins V14/Deep.bundle");
    QString messagesSoFar = messagesUntil(u"Deep (Waves)"_s);
    messages.shown.clear();
    ASSERT_TRUE(QDir().rename(on, off));
    root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/Acme/Late.clap");
    messagesSoFar += messagesUntil(u"New plugin found: Late (CLAP)"_s);
    EXPECT_FALSE(messagesSoFar.contains(QRegularExpression(u"Old|Wave[sS]hell|readme"_s)))
        << qPrintable(messagesSoFar);

    launchAtLogin.click();
    EXPECT_FALSE(item.isEnabled());
    EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
}

TEST_F(HelperAgentTest, OpensTheApplicationByAClickAndQuitsFromItsMenu)
{
    const QString bundle = u"/Applications/Orvanlite.app"_s;
    const QString path = bundle + u"/Contents/MacOS/plugin-manager"_s;
    const QString program = root.at(path);
    root.addBundle(bundle, infoPlist({{u"CFBundleIdentifier"_s, u"com.yourcompany.Orvanlite"_s},
                                      {u"CFBundleExecutable"_s, u"plugin-manager"_s}}));
    root.addFolder(bundle + u"/Contents/MacOS"_s);
    ASSERT_TRUE(QFile::copy(u"/bin/sleep"_s, program));
    desktop.registerService(u"org.kde.StatusNotifierWatcher"_s);
    QProcess agent;
    agent.start(executable(), {});
    ASSERT_TRUE(waitFor([this] { return !tray.items.empty(); }));
    EXPECT_TRUE(shows(u"Plugins not counted yet"_s));
    QProcess application;
    application.start(program, {u"60"_s});
    ASSERT_TRUE(application.waitForStarted());
    // The menu opens while the application is running.
    call({u"/MenuBar"_s, u"com.canonical.dbusmenu.AboutToShow"_s, u"int32:0"_s});
    application.kill();
    ASSERT_TRUE(waitFor([&] { return application.state() == QProcess::NotRunning; }));
    ASSERT_TRUE(QFile::remove(program));
    root.addScript(path, ": > " + root.at(u"/opened").toUtf8() + '\n');
    call({u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem.Activate"_s, u"int32:0"_s, u"int32:0"_s});
    EXPECT_TRUE(waitFor([this] { return root.exists(u"/opened"); }));

    const auto quit = QRegularExpression(u"int32 (\\d+)\\s+array \\[[^\\]]*\"Quit Helper\""_s).match(menu());
    ASSERT_TRUE(quit.hasMatch()) << qPrintable(menu());
    call({u"/MenuBar"_s, u"com.canonical.dbusmenu.Event"_s, u"int32:"_s + quit.captured(1),
          u"string:clicked"_s, u"variant:int32:0"_s, u"uint32:0"_s});
    EXPECT_TRUE(waitFor([&] { return agent.state() == QProcess::NotRunning; }));
    EXPECT_EQ(agent.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(agent.exitCode(), 0) << agent.readAllStandardError().constData();
}

TEST_F(MenuBarLoginItemTest, ReplacesEveryCopyExceptItsOwn)
{
    const QString other = u"/Old/OrvanliteHelper.app"_s;
    addAgent(other);
    root.addBundle(u"/Other.app", infoPlist({{u"CFBundleIdentifier"_s, u"com.other"_s}}));
    for (const QStringList& running : {QStringList(), {other}, {own, other}, {own}}) {
        SCOPED_TRACE(running.join(u' ').toStdString());
        const bool isLeft = running == QStringList{own};
        for (const QString& bundle : running)
            start(bundle);
        const auto before = workspace.runningApplications();
        item.setEnabled(true);
        EXPECT_TRUE(item.isEnabled());
        EXPECT_TRUE(root.content(entry).contains(own.toUtf8()));
        ASSERT_EQ(clock.sleepers(), isLeft ? 0 : 1);
        if (!isLeft) {
            EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
            clock.advance(std::chrono::milliseconds(499));
            EXPECT_EQ(clock.sleepers(), 1);
            clock.advance(std::chrono::milliseconds(1));
            EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().size() == 1; }));
        }
        const auto after = workspace.runningApplications();
        ASSERT_EQ(after.size(), 1U);
        EXPECT_EQ(after.front().bundlePath, root.at(own));
        EXPECT_EQ(after == before, isLeft);
        item.setEnabled(false);
        EXPECT_FALSE(item.isEnabled());
        EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
    }
}

TEST_F(MenuBarLoginItemTest, PrintsFailuresAndResetsTheSwitch)
{
    MenuBarSection section(item, nullptr);
    auto& launchAtLogin = *section.findChild<QAbstractButton*>(u"launchAtLoginSwitch"_s);
    const QString old = u"/Old/OrvanliteHelper.app"_s;
    addAgent(old);
    start(old);
    root.addFile(u"/Users/tester/.config/autostart", "not a folder");
    const std::string registration = printedBy([&] { launchAtLogin.click(); });
    EXPECT_TRUE(registration.starts_with("MenuBarLoginItem: Failed to register: ")) << registration;
    const std::string removal = printedBy([&] { item.setEnabled(false); });
    EXPECT_TRUE(removal.starts_with("MenuBarLoginItem: Failed to unregister: ")) << removal;
    EXPECT_FALSE(launchAtLogin.isChecked());
    EXPECT_EQ(workspace.terminations, 0);
    EXPECT_EQ(clock.sleepers(), 0);

    // Meanwhile switched off in the settings of the session.
    QFile::remove(root.at(u"/Users/tester/.config/autostart"));
    launchAtLogin.click();
    EXPECT_TRUE(launchAtLogin.isChecked());
    root.addFile(entry, "[Desktop Entry]\nHidden=true\n");
    section.show();
    EXPECT_FALSE(launchAtLogin.isChecked());
    root.addFile(entry, "[Desktop Entry]\n"); // and on again, which the switch does not show yet
    launchAtLogin.click();
    EXPECT_FALSE(root.exists(entry)) << "toggles the current state";

    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
    clock.advance(std::chrono::milliseconds(500));
    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().size() == 1; }));
    item.terminateHelper();
    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
    const int before = workspace.terminations;
    real.files.remove(root.at(own));
    start(old);
    item.launchHelperNow();
    EXPECT_EQ(workspace.terminations, before) << "there is no replacement to start";
}

} // namespace orvanlite::test

#include "HelperAgentTest.moc"
