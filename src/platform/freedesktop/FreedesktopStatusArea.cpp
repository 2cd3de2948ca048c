#include "platform/StatusArea.h"

#include "platform/freedesktop/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QTimer>

#include <chrono>
#include <utility>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

const QString kWatcher = u"org.kde.StatusNotifierWatcher"_s;
const QString kWatcherPath = u"/StatusNotifierWatcher"_s;

} // namespace

/// Waits until a tray host is registered. Qt checks only once, when the first item is created, and otherwise
/// falls back to the X11 tray for good.
/// Source: StatusNotifierItem specification.
class StatusHostWatch final : public QObject {
    Q_OBJECT

public:
    StatusHostWatch(QObject* parent, std::function<void()> handler)
        : QObject(parent)
        , m_handler(std::move(handler))
    {
        QDBusConnection* bus = m_bus.connection();
        if (!bus)
            return;
        auto* arrivals =
            new QDBusServiceWatcher(kWatcher, *bus, QDBusServiceWatcher::WatchForRegistration, this);
        connect(arrivals, &QDBusServiceWatcher::serviceRegistered, this, &StatusHostWatch::ask);
        bus->connect(kWatcher, kWatcherPath, kWatcher, u"StatusNotifierHostRegistered"_s, this, SLOT(ask()));
        // Wayland sessions have no X11 tray: wait indefinitely.
        constexpr std::chrono::seconds kLongestWait(30);
        if (qEnvironmentVariable("XDG_SESSION_TYPE") != u"wayland"_s)
            QTimer::singleShot(kLongestWait, this, &StatusHostWatch::notify);
        ask();
    }

private Q_SLOTS:
    void ask()
    {
        QDBusConnection* bus = m_bus.connection();
        if (!bus)
            return;
        QDBusMessage question = QDBusMessage::createMethodCall(
            kWatcher, kWatcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
        question.setArguments({kWatcher, u"IsStatusNotifierHostRegistered"_s});
        auto* answer = new QDBusPendingCallWatcher(bus->asyncCall(question), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
            const QDBusPendingReply<QDBusVariant> reply = *answer;
            if (reply.isValid() && reply.value().variant().toBool())
                notify();
        });
    }

private:
    void notify()
    {
        const auto handler = std::exchange(m_handler, nullptr);
        deleteLater();
        if (handler)
            handler();
    }

    SessionBus m_bus;
    std::function<void()> m_handler;
};

void whenStatusAreaIsReady(QObject* context, std::function<void()> handler)
{
    new StatusHostWatch(context, std::move(handler));
}

bool clickOpensStatusMenu() { return false; }

} // namespace orvanlite::platform

#include "FreedesktopStatusArea.moc"
