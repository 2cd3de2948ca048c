#include "ShellFixture.h"
#include "profiles/ProfilesFixture.h"
#include "shell/onboarding/OnboardingView.h"
#include "shell/sheets/UADCleanupSheet.h"
#include "support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>

namespace orvanlite::test {

/// The session of a user with a screen reader.
class AccessibleSession {
public:
    AccessibleSession()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        m_launcher.start(u"/usr/libexec/at-spi-bus-launcher"_s, {u"--launch-immediately"_s});
    }
    ~AccessibleSession()
    {
        m_launcher.terminate();
        m_launcher.waitForFinished();
    }

private:
    VirtualScreen m_screen;
    PrivateBus m_bus;
    QProcess m_launcher;
};

/// What a screen reader receives from the bridge.
class Reader final : public QObject {
    Q_OBJECT

public:
    QStringList heard; ///< names of notifications, and of objects with the focus

    Reader()
    {
        const auto* services = QDBusConnection::sessionBus().interface();
        EXPECT_TRUE(waitFor([&] { return services->isServiceRegistered(u"org.a11y.Bus"_s).value(); }));
        QDBusInterface launcher(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s);
        m_bus =
            QDBusConnection::connectToBus(QDBusReply<QString>(launcher.call(u"GetAddress"_s)), u"reader"_s);
        m_bus.connect({}, {}, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, this,
                      SLOT(stateChanged(QDBusMessage)));
    }
    ~Reader() override { QDBusConnection::disconnectFromBus(u"reader"_s); }
    /// Makes the bridge report events and take every key; once more, it becomes the first to see keys.
    void listen()
    {
        QDBusInterface registry(u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
                                u"org.a11y.atspi.Registry"_s, m_bus);
        EXPECT_EQ(registry.call(u"RegisterEvent"_s, u"object:"_s).type(), QDBusMessage::ReplyMessage);
        QTest::qWait(300); // until the bridge has heard of it
    }
    bool hears(const QString& text)
    {
        const bool isHeard = waitFor([&] { return heard.contains(text); });
        EXPECT_TRUE(isHeard) << qPrintable(text) << " in " << qPrintable(heard.join(u'|'));
        heard.clear();
        return isHeard;
    }

private Q_SLOTS:
    void stateChanged(const QDBusMessage& event)
    {
        const QString state = event.arguments().value(0).toString();
        if (event.arguments().value(1).toInt() != 1 || (state != u"showing" && state != u"focused"))
            return;
        ask(event, u"GetRoleName"_s, {}, [=, this](const QString& role) {
            if (state == u"focused" || role == u"notification")
                ask(event, u"org.freedesktop.DBus.Properties.Get"_s,
                    {u"org.a11y.atspi.Accessible"_s, u"Name"_s},
                    [this](const QString& name) { heard.append(name); });
        });
    }

private:
    /// Without blocking, as the answer comes from this process.
    void ask(const QDBusMessage& event, const QString& method, const QVariantList& arguments,
             const std::function<void(QString)>& answered)
    {
        const qsizetype dot = method.lastIndexOf(u'.');
        auto call = QDBusMessage::createMethodCall(
            event.service(), event.path(), dot < 0 ? u"org.a11y.atspi.Accessible"_s : method.first(dot),
            method.mid(dot + 1));
        call.setArguments(arguments);
        auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered] {
            const QVariant value = watcher->reply().arguments().value(0);
            answered(value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant().toString()
                                                      : value.toString());
            watcher->deleteLater();
        });
    }

    QDBusConnection m_bus{u"reader"_s};
};

class ScreenReaderTest : public ShellTest {
protected:
    static void keys(const QStringList& arguments)
    {
        QProcess tool;
        tool.start(u"xdotool"_s, arguments);
        EXPECT_TRUE(waitFor([&] { return tool.state() == QProcess::NotRunning; }));
    }
    void activate()
    {
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }

    Reader m_reader;
};

TEST_F(ScreenReaderTest, HiddenKeysCountOnce)
{
    launch();
    auto& sheet = named<UADCleanupSheet>(window(), u"uadCleanupSheet"_s);
    for (const bool isBridgeFirst : {false, true}) {
        SCOPED_TRACE(isBridgeFirst);
        activate();
        if (!isBridgeFirst)
            m_reader.listen();
        click(window(), u"resetButton"_s);
        if (isBridgeFirst)
            m_reader.listen();
        quietly([&] {
            keys({u"key"_s, u"q"_s, u"e"_s, u"q"_s, u"e"_s, u"q"_s, u"e"_s, u"q"_s, u"e"_s});
            EXPECT_TRUE(waitFor([&] { return sheet.isVisible(); }));
        });
        sheet.reject();
    }
}

TEST_F(ScreenReaderTest, HeldKeyActsOnce)
{
    addPlugins(1);
    launch();
    activate();
    table().setFocus();
    for (const bool isBridgeFirst : {false, true}) {
        SCOPED_TRACE(isBridgeFirst);
        const auto before = m_log.entries->size();
        if (isBridgeFirst)
            m_reader.listen();
        keys({u"keydown"_s, u"space"_s});
        QTest::qWait(1'500);
        keys({u"keyup"_s, u"space"_s});
        QTest::qWait(500);
        EXPECT_EQ(m_log.entries->size(), before + 1);
    }
}

TEST_F(ScreenReaderTest, HearsWhatChangesAwayFromTheFocus)
{
    m_database.replaceAllPlugins({plugin(u"Earlier"_s, true)});
    ProfileManager(m_system.platform).saveProfile(u"Mixing"_s, {});
    addPlugins(3);
    m_reader.listen();
    launch();
    m_reader.hears(u"3 new plugins detected: Plugin 0000, Plugin 0001, Plugin 0002"_s);
    activate();
    table().setFocus();
    m_reader.hears(u"Enabled"_s); // the first cell
    press(Qt::Key_Space);
    m_reader.hears(u"Plugin 0000, Disabled"_s);
    press(Qt::Key_A, Qt::ControlModifier);
    m_reader.hears(u"selected, 3 plugin(s)"_s);
    press(window(), u"disableSelectedButton"_s);
    m_reader.hears(u"Disabled, 2 plugins"_s);
    press(window(), u"formatsHeader"_s);
    m_reader.hears(u"expanded"_s);
    table().header()->setFocus();
    m_reader.hears(u"Sort by Name, ascending"_s);
    (new OnboardingView(m_system.platform, m_diskAccess, &window()))->open();
    press(window(), u"onboardingNextButton"_s);
    m_reader.hears(
        u"Enable & Disable Plugins. Toggle any plugin on or off without uninstalling it. Disabled plugins are "
        "moved to a safe folder — bring them back any time."_s);
}

} // namespace orvanlite::test

int main(int argc, char** argv)
{
    qputenv("TZ", "UTC");
    qputenv("LC_ALL", "C.UTF-8");
    const orvanlite::test::AccessibleSession session; // the bridge exists only on a display
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}

#include "ScreenReaderTest.moc"
