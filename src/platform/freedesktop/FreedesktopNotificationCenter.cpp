#include "platform/freedesktop/FreedesktopNotificationCenter.h"

#include "platform/freedesktop/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QRegularExpression>

#include <optional>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

struct SignalName {
    QString path;
    QString interface;
    QString member;
};

/// Source: D-Bus Specification, "Valid Names".
std::optional<SignalName> signalName(const QString& name)
{
    static const QRegularExpression valid(u"^[A-Za-z_][A-Za-z0-9_]*(\\.[A-Za-z_][A-Za-z0-9_]*){2,}\\z"_s);
    constexpr qsizetype kLongestName = 255;
    if (name.size() > kLongestName || !valid.match(name).hasMatch())
        return std::nullopt;
    const qsizetype dot = name.lastIndexOf(u'.');
    SignalName signal;
    signal.interface = name.first(dot);
    signal.member = name.sliced(dot + 1);
    signal.path = u'/' + QString(signal.interface).replace(u'.', u'/');
    return signal;
}

} // namespace

/// Forwards the signals of one name to its observers; Qt disconnects them when their context is destroyed.
class NotificationChannel final : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void receive(const QDBusMessage& message)
    {
        Q_EMIT received(qdbus_cast<QVariantMap>(message.arguments().value(0)));
    }

Q_SIGNALS:
    void received(const QVariantMap& userInfo);
};

FreedesktopNotificationCenter::FreedesktopNotificationCenter(SessionBus& bus)
    : m_bus(bus)
{}
FreedesktopNotificationCenter::~FreedesktopNotificationCenter() = default;

void FreedesktopNotificationCenter::post(const QString& name, const QVariantMap& userInfo)
{
    const auto signal = signalName(name);
    QDBusConnection* bus = signal ? m_bus.connection() : nullptr;
    if (!bus)
        return;
    QDBusMessage message = QDBusMessage::createSignal(signal->path, signal->interface, signal->member);
    message.setArguments({userInfo});
    bus->send(message);
}

void FreedesktopNotificationCenter::observe(const QString& name, QObject* context, Handler handler)
{
    const auto signal = signalName(name);
    QDBusConnection* bus = signal ? m_bus.connection() : nullptr;
    if (!bus)
        return;
    std::shared_ptr<NotificationChannel>& channel = m_channels[name];
    if (!channel) {
        channel = std::make_shared<NotificationChannel>();
        bus->connect(QString(), signal->path, signal->interface, signal->member, channel.get(),
                     SLOT(receive(QDBusMessage)));
    }
    QObject::connect(channel.get(), &NotificationChannel::received, context, std::move(handler));
}

} // namespace orvanlite::platform

#include "FreedesktopNotificationCenter.moc"
