#include "platform/freedesktop/SessionBus.h"
#include "platform/freedesktop/FreedesktopAppearance.h"
#include "platform/freedesktop/FreedesktopNotificationCenter.h"
#include "platform/freedesktop/FreedesktopUserNotifications.h"
#include "support/Fakes.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QThread>

#include <atomic>

using SettingGroups = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(SettingGroups)

namespace orvanlite::test {

using namespace platform;

namespace {

const QString kCount = u"com.yourcompany.Orvanlite.pluginCountChanged"_s;
const QString kLaunch = u"com.yourcompany.Orvanlite.appDidLaunch"_s;

/// In its own thread, since the first query blocks.
class FakePortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(const QString& address)
        : m_bus(QDBusConnection::connectToBus(address, u"portal"_s))
    {
        qDBusRegisterMetaType<SettingGroups>();
        moveToThread(&m_thread);
        m_bus.registerObject(u"/org/freedesktop/portal/desktop"_s, this, QDBusConnection::ExportAllSlots);
        m_bus.registerService(u"org.freedesktop.portal.Desktop"_s);
        m_thread.start();
    }
    ~FakePortal() override
    {
        m_bus.unregisterObject(u"/org/freedesktop/portal/desktop"_s);
        QDBusConnection::disconnectFromBus(u"portal"_s);
        m_thread.quit();
        m_thread.wait();
    }

    SettingGroups settings;
    std::atomic<int> unanswered = 0;

    void change(const QString& group, const QString& key, const QVariant& value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
        m_bus.send(signal);
    }

public Q_SLOTS:
    void ReadAll(const QStringList& groups, const QDBusMessage& message)
    {
        message.setDelayedReply(true);
        if (unanswered.fetch_sub(1) > 0)
            return;
        SettingGroups answer = settings;
        answer.removeIf([&](auto each) { return !groups.contains(each.key()); });
        m_bus.send(message.createReply(QVariant::fromValue(answer)));
    }

private:
    QDBusConnection m_bus;
    QThread m_thread;
};

QVariant colour(double red, double green, double blue)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

struct SessionBusTest : testing::Test {
    ~SessionBusTest() override { QDBusConnection::disconnectFromBus(u"other"_s); }
    PrivateBus daemon;
    SessionBus bus{daemon.address()};
    QDBusConnection other = QDBusConnection::connectToBus(daemon.address(), u"other"_s); ///< another program
};

int warnings = 0;

} // namespace

TEST_F(SessionBusTest, PostsToObserversWhileTheirContextExists)
{
    FreedesktopNotificationCenter center(bus);
    auto context = std::make_unique<QObject>();
    QStringList heard;
    const auto observe = [&](const QString& name, QObject* whose, const QString& who) {
        center.observe(name, whose, [&heard, who](const QVariantMap& info) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            heard.append(who + info.value(u"version"_s).toString());
        });
    };
    observe(kLaunch, context.get(), u"first"_s);
    observe(kLaunch, qApp, u"second"_s);
    observe(kCount, qApp, u"count"_s);
    const auto post = [this](const QString& member, const QVariant& argument) {
        other.send(QDBusMessage::createSignal(u"/com/yourcompany/Orvanlite"_s, u"com.yourcompany.Orvanlite"_s,
                                              member)
                   << argument);
    };
    for (const QString& dropped : {u"com.yourcompany.Orvanlite.1"_s, u"com.yourcompany.Orvanlite.x\n"_s})
        center.post(dropped, {});
    center.post(kLaunch, {{u"version"_s, u"1"_s}}); // this process observes its own
    ASSERT_TRUE(waitFor([&] { return heard.size() >= 2; }));
    post(u"somethingElse"_s, QVariantMap());
    post(u"pluginCountChanged"_s, QVariantMap());
    ASSERT_TRUE(waitFor([&] { return heard.size() >= 3; }));
    heard.sort();
    EXPECT_EQ(heard, (QStringList{u"count"_s, u"first1"_s, u"second1"_s}));
    context.reset();
    post(u"appDidLaunch"_s, u"no map"_s);
    ASSERT_TRUE(waitFor([&] { return heard.size() > 3; }));
    EXPECT_EQ(heard.sliced(3), QStringList{u"second"_s});
}

TEST_F(SessionBusTest, EscapesTheBodyOnlyForMarkup)
{
    FakeNotificationService service;
    other.registerObject(u"/org/freedesktop/Notifications"_s, &service, QDBusConnection::ExportAllSlots);
    other.registerService(u"org.freedesktop.Notifications"_s);
    FreedesktopUserNotifications notifications(bus);
    for (const auto& [capability, body] :
         {std::pair{u"body-markup"_s, u"Drums &amp; Bass"_s}, std::pair{u"body"_s, u"Drums & Bass"_s}}) {
        service.capabilities = QStringList{capability};
        service.shown.clear();
        notifications.show(u"New <plugins>"_s, u"Drums & Bass"_s);
        ASSERT_TRUE(waitFor([&] { return !service.shown.isEmpty(); }));
        EXPECT_EQ(service.shown.last(), (QStringList{u"Orvanlite"_s, u"New <plugins>"_s, body}));
    }
}

TEST_F(SessionBusTest, ReadsTheAppearanceFromThePortal)
{
    const QString look = u"org.freedesktop.appearance"_s;
    const QString desktop = u"org.gnome.desktop.interface"_s;
    const std::tuple<QVariant, QVariant, QVariant, std::optional<bool>, std::optional<Rgb>, bool> rows[] = {
        {1U, colour(0.25, 0, 1), false, true, Rgb{0.25, 0, 1}, true},
        {2U, colour(-1, -1, -1), true, false, {}, false}, // no accent colour chosen
        {u"dark"_s, u"red"_s, 0, {}, {}, false},          // of other types
    };
    EXPECT_EQ(FreedesktopAppearance(bus).isDark(), std::nullopt) << "no portal";
    FakePortal portal(daemon.address());
    for (const auto& [scheme, accentValue, animations, dark, accent, reduced] : rows) {
        SCOPED_TRACE(qPrintable(scheme.toString()));
        portal.settings = {{look, {{u"color-scheme"_s, scheme}, {u"accent-color"_s, accentValue}}},
                           {desktop, {{u"enable-animations"_s, animations}}}};
        const FreedesktopAppearance appearance(bus, std::chrono::seconds(20));
        EXPECT_EQ(appearance.isDark(), dark);
        EXPECT_EQ(appearance.accentColour(), accent);
        EXPECT_EQ(appearance.reducesMotion(), reduced);
        EXPECT_FALSE(appearance.increasesContrast());
    }
    const QString accessibility = u"org.gnome.desktop.a11y.interface"_s;
    const std::tuple<QString, QString, QVariant, bool> contrasts[] = {
        {look, u"contrast"_s, 1U, false},
        {accessibility, u"high-contrast"_s, true, false},
        {desktop, u"gtk-theme"_s, u"HighContrast"_s, false},
        {desktop, u"gtk-theme"_s, u"HighContrastInverse"_s, true},
    };
    for (const auto& [group, key, value, dark] : contrasts) {
        SCOPED_TRACE(qPrintable(key));
        portal.settings = {{group, {{key, value}}}};
        const FreedesktopAppearance appearance(bus, std::chrono::seconds(20));
        EXPECT_TRUE(appearance.increasesContrast());
        EXPECT_EQ(appearance.isDark().value_or(false), dark);
    }
}

TEST_F(SessionBusTest, FollowsTheAppearanceOfThePortal)
{
    const QString look = u"org.freedesktop.appearance"_s;
    FakePortal portal(daemon.address());
    portal.settings = {{look, {{u"color-scheme"_s, 2U}}}};
    portal.unanswered = 1;
    FreedesktopAppearance appearance(bus, std::chrono::milliseconds(20));
    int changes = 0;
    appearance.observe(qApp, [&changes] { ++changes; });
    EXPECT_EQ(appearance.isDark(), std::nullopt) << "not waited for any longer";
    ASSERT_TRUE(waitFor([&] { return changes > 0; }));
    EXPECT_EQ(appearance.isDark(), false);
    portal.change(look, u"color-scheme"_s, 2U); // unchanged
    portal.change(look, u"unknown"_s, 1U);
    portal.change(look, u"accent-color"_s, colour(0, 0.5, 0));
    ASSERT_TRUE(waitFor([&] { return appearance.accentColour().has_value(); }));
    EXPECT_EQ(changes, 2) << "only changes are reported";
    EXPECT_EQ(appearance.accentColour(), (Rgb{0, 0.5, 0}));
}

TEST(NoSessionBus, IsSilentAndDoesNotReconnect)
{
    const auto before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++warnings; });
    const auto useAll = [](SessionBus& bus) {
        FreedesktopNotificationCenter center(bus);
        const FreedesktopAppearance appearance(bus);
        center.observe(kCount, qApp, [](const QVariantMap&) {});
        center.post(kCount, {});
        EXPECT_EQ(appearance.isDark(), std::nullopt);
        FreedesktopUserNotifications(bus).show(u"a"_s, u"b"_s);
        turnEventLoop();
    };
    const QByteArray inherited = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", "/none");
    PrivateBus daemon;
    for (const QByteArray& address : {QByteArray(), QByteArray("unix:path=/none/bus")}) {
        SCOPED_TRACE(address.constData());
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        SessionBus bus;
        useAll(bus);
        qputenv("DBUS_SESSION_BUS_ADDRESS", daemon.address().toUtf8());
        EXPECT_EQ(bus.connection(), nullptr);
    }
    SessionBus lost;
    EXPECT_NE(lost.connection(), nullptr) << "found through the environment";
    daemon.stop();
    EXPECT_TRUE(waitFor([&] { return lost.connection() == nullptr; }));
    useAll(lost);
    qputenv("DBUS_SESSION_BUS_ADDRESS", inherited);
    qputenv("XDG_RUNTIME_DIR", runtime);
    qInstallMessageHandler(before);
    EXPECT_EQ(warnings, 0);
}

} // namespace orvanlite::test

#include "SessionBusTest.moc"
