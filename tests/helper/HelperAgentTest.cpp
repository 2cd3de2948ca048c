#include "helper/HelperTest.h"
#include "platform/Defaults.h"
#include "platform/NotificationCenter.h"

#include <unistd.h>

#include <QDBusConnection>
#include <QDir>
#include <QRegularExpression>

namespace orvanlite::test {

namespace {

/// Stands for the desktop's tray.
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
    static void SetUpTestSuite()
    {
        s_screen = std::make_unique<QProcess>();
        s_screen->start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
        while (!s_screen->canReadLine() && s_screen->waitForReadyRead()) {
        }
        qputenv("DISPLAY", ':' + s_screen->readLine().trimmed());
    }
    static void TearDownTestSuite()
    {
        s_screen->terminate();
        s_screen->waitForFinished();
        s_screen.reset();
    }
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

    /// Calls the tray's item without waiting: the item may be waiting for the tray.
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
        return waitFor([&] {
            return call({u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties.Get"_s,
                         u"string:org.kde.StatusNotifierItem"_s, u"string:ToolTip"_s})
                       .contains(u'"' + text + u'"') &&
                   menu().contains(u'"' + text + u'"');
        });
    }
    /// As the application does after each reload.
    void count(int enabled)
    {
        real.defaults.suite(u"com.yourcompany.Orvanlite"_s)->setValue(u"enabledPluginCount"_s, enabled);
        real.notifications.post(u"com.yourcompany.Orvanlite.pluginCountChanged"_s, {});
    }
    /// The last lines of all messages so far, when one of them names the plugin.
    QString toldUntil(const QString& plugin)
    {
        QString told;
        EXPECT_TRUE(waitFor([&] {
            told.clear();
            for (const QStringList& each : std::as_const(messages.shown))
                told += each[1] + u": "_s + each[2] + u'\n';
            return told.contains(plugin);
        }));
        return told;
    }
    /// By then the agent has set all up.
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

    static inline std::unique_ptr<QProcess> s_screen;
    QDBusConnection desktop;
    FakeNotificationService messages;
    FakeTray tray;
};

} // namespace

TEST_F(HelperAgentTest, CountsAndMonitorsFromSwitchOnToSwitchOff)
{
    const QString library = u"/Library/Audio/Plug-Ins/"_s;
    root.addBundle(library + u"Disabled/VST3/Old.vst3"_s);
    root.addFolder(library + u"VST3"_s);
    // Rings of links have to come to an end.
    for (const QString& ring : {u"VST3/Ring 1"_s, u"VST3/Ring 2"_s})
        QFile::link(root.at(library + u"VST3"_s), root.at(library + ring));
    MenuBarLoginItem item(with(real.clock));
    MenuBarSection section(item, nullptr);
    auto& launchAtLogin = *section.findChild<QAbstractButton*>(u"launchAtLoginSwitch"_s);
    count(41);
    launchAtLogin.click();
    ASSERT_TRUE(launchAtLogin.isChecked());
    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().size() == 1; }));
    const RunningApplication agent = workspace.runningApplications().front();
    EXPECT_NE(::getsid(static_cast<pid_t>(agent.processId)), ::getsid(0)) << "it would end with us";

    ASSERT_TRUE(waitFor([&] { return isWatching(agent.processId); }));
    desktop.registerService(u"org.kde.StatusNotifierWatcher"_s); // a tray that comes later than the agent
    ASSERT_TRUE(waitFor([this] { return !tray.items.empty(); }));
    EXPECT_TRUE(shows(u"41 plugins enabled"_s));
    count(1);
    EXPECT_TRUE(shows(u"1 plugin enabled"_s));
    // Written without a word; the next notification is heard though it tells of no change.
    real.defaults.suite(u"com.yourcompany.Orvanlite"_s)->setValue(u"enabledPluginCount"_s, 7);
    real.notifications.post(u"com.yourcompany.Orvanlite.appDidLaunch"_s, {{u"version"_s, u"1"_s}});
    EXPECT_TRUE(shows(u"7 plugins enabled"_s));
    QProcess second;
    second.start(executable(), {});
    EXPECT_TRUE(waitFor([&] { return second.state() == QProcess::NotRunning; }));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(workspace.runningApplications(), std::vector{agent});

    root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/Acme/Drums & Bass.clap");
    toldUntil(u"New plugin found: Drums &amp; Bass (CLAP)"_s);
    // Switched on by the application, a container of plugins, none at all, and one that is new.
    const QString off = root.at(library + u"Disabled/VST3/Old.vst3"_s);
    const QString on = root.at(library + u"VST3/Old.vst3"_s);
    ASSERT_TRUE(QDir().rename(off, on));
    root.addBundle(library + u"VST3/WaveShell1.vst3"_s);
    root.addFile(library + u"VST3/readme.txt"_s);
    root.addBundle(u"/Applications/Waves/Plug-Ins V14/Deep.bundle");
    QString told = toldUntil(u"Deep (Waves)"_s);
    messages.shown.clear();
    ASSERT_TRUE(QDir().rename(on, off));
    root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/Acme/Late.clap");
    told += toldUntil(u"New plugin found: Late (CLAP)"_s);
    EXPECT_FALSE(told.contains(QRegularExpression(u"Old|Wave[sS]hell|readme"_s))) << qPrintable(told);

    launchAtLogin.click();
    EXPECT_FALSE(item.isEnabled());
    EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
}

TEST_F(HelperAgentTest, EndsFromItsMenu)
{
    desktop.registerService(u"org.kde.StatusNotifierWatcher"_s);
    QProcess agent;
    agent.start(executable(), {});
    ASSERT_TRUE(waitFor([this] { return !tray.items.empty(); }));
    EXPECT_TRUE(shows(u"Plugins not counted yet"_s));
    const auto quit = QRegularExpression(u"int32 (\\d+)\\s+array \\[[^\\]]*\"Quit Helper\""_s).match(menu());
    ASSERT_TRUE(quit.hasMatch()) << qPrintable(menu());
    call({u"/MenuBar"_s, u"com.canonical.dbusmenu.Event"_s, u"int32:"_s + quit.captured(1),
          u"string:clicked"_s, u"variant:int32:0"_s, u"uint32:0"_s});
    EXPECT_TRUE(waitFor([&] { return agent.state() == QProcess::NotRunning; }));
    EXPECT_EQ(agent.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(agent.exitCode(), 0) << agent.readAllStandardError().constData();
}

TEST_F(HelperAgentTest, OpensTheApplicationByAClickWheneverItDoesNotRun)
{
    const QString program = root.at(u"/Applications/Orvanlite.app/Contents/MacOS/plugin-manager");
    root.addFile(u"/Applications/Orvanlite.app/Contents/Info.plist",
                 infoPlist({{u"CFBundleIdentifier"_s, u"com.yourcompany.Orvanlite"_s},
                            {u"CFBundleExecutable"_s, u"plugin-manager"_s}}));
    root.addFolder(u"/Applications/Orvanlite.app/Contents/MacOS");
    ASSERT_TRUE(QFile::copy(u"/bin/sleep"_s, program));
    desktop.registerService(u"org.kde.StatusNotifierWatcher"_s);
    QProcess agent;
    agent.start(executable(), {});
    ASSERT_TRUE(waitFor([this] { return !tray.items.empty(); }));
    QProcess application;
    application.start(program, {u"60"_s});
    ASSERT_TRUE(application.waitForStarted());
    // The menu is looked at while there is nothing to open.
    call({u"/MenuBar"_s, u"com.canonical.dbusmenu.AboutToShow"_s, u"int32:0"_s});
    application.kill();
    ASSERT_TRUE(waitFor([&] { return application.state() == QProcess::NotRunning; }));
    ASSERT_TRUE(QFile::remove(program));
    root.addFile(u"/Applications/Orvanlite.app/Contents/MacOS/plugin-manager",
                 "#!/bin/sh\n: > " + root.at(u"/opened").toUtf8() + '\n');
    ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    call({u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem.Activate"_s, u"int32:0"_s, u"int32:0"_s});
    EXPECT_TRUE(waitFor([this] { return root.exists(u"/opened"); }));
    agent.terminate();
    EXPECT_TRUE(waitFor([&] { return agent.state() == QProcess::NotRunning; }));
}

} // namespace orvanlite::test

#include "HelperAgentTest.moc"
