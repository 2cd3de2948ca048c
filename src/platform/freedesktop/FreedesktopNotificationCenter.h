#pragma once

#include "platform/NotificationCenter.h"

#include <QHash>

#include <memory>

namespace orvanlite::platform {

class NotificationChannel;
class SessionBus;

/// Notifications as signals on the session bus: "com.example.Application.happened" is the member "happened"
/// of the interface "com.example.Application", sent from the object "/com/example/Application", with the user
/// info as the only argument (a{sv}). Names that do not form a valid interface and member are ignored.
class FreedesktopNotificationCenter final : public NotificationCenter {
public:
    explicit FreedesktopNotificationCenter(SessionBus& bus);
    ~FreedesktopNotificationCenter() override;

    void post(const QString& name, const QVariantMap& userInfo) override;
    void observe(const QString& name, QObject* context, Handler handler) override;

private:
    SessionBus& m_bus;
    QHash<QString, std::shared_ptr<NotificationChannel>> m_channels;
};

} // namespace orvanlite::platform
