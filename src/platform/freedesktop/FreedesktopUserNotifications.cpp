#include "platform/freedesktop/FreedesktopUserNotifications.h"

#include "platform/freedesktop/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

void FreedesktopUserNotifications::show(const QString& title, const QString& body)
{
    QDBusConnection* bus = m_bus.connection();
    if (!bus)
        return;
    QDBusMessage message = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                          u"/org/freedesktop/Notifications"_s,
                                                          u"org.freedesktop.Notifications"_s, u"Notify"_s);
    constexpr uint kNothingReplaced = 0;
    constexpr int kTimeOfTheService = -1;
    // The body is markup, the title is not.
    message.setArguments({u"Orvanlite"_s, kNothingReplaced, QString(), title, body.toHtmlEscaped(),
                          QStringList(), QVariantMap(), kTimeOfTheService});
    bus->send(message);
}

} // namespace orvanlite::platform
