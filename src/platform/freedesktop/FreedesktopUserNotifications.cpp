#include "platform/freedesktop/FreedesktopUserNotifications.h"

#include "platform/freedesktop/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

const QString kService = u"org.freedesktop.Notifications"_s;
const QString kObject = u"/org/freedesktop/Notifications"_s;
/// Name of the application's desktop entry and of its icon.
const QString kEntry = u"com.yourcompany.Orvanlite"_s;

QDBusMessage notification(const QString& title, const QString& body)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kService, kObject, kService, u"Notify"_s);
    constexpr uint kNothingReplaced = 0;
    constexpr int kDefaultTimeout = -1;
    message.setArguments({u"Orvanlite"_s, kNothingReplaced, kEntry, title, body, QStringList(),
                          QVariantMap{{u"desktop-entry"_s, kEntry}}, kDefaultTimeout});
    return message;
}

} // namespace

void FreedesktopUserNotifications::show(const QString& title, const QString& body)
{
    QDBusConnection* bus = m_bus.connection();
    if (!bus)
        return;
    // The title is always plain text; the body is markup for services with that capability.
    // Source: Desktop Notifications Specification.
    const QDBusMessage question =
        QDBusMessage::createMethodCall(kService, kObject, kService, u"GetCapabilities"_s);
    auto* answer = new QDBusPendingCallWatcher(bus->asyncCall(question));
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer,
                     [answer, connection = *bus, title, body] {
                         const QDBusPendingReply<QStringList> reply = *answer;
                         const bool isMarkup = reply.isValid() && reply.value().contains(u"body-markup"_s);
                         connection.send(notification(title, isMarkup ? body.toHtmlEscaped() : body));
                         answer->deleteLater();
                     });
}

} // namespace orvanlite::platform
