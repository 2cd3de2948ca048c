#pragma once

#include "platform/UserNotifications.h"

namespace orvanlite::platform {

class SessionBus;

/// Messages through the desktop's notification service; does not wait for its reply.
/// Source: Desktop Notifications Specification.
class FreedesktopUserNotifications final : public UserNotifications {
public:
    explicit FreedesktopUserNotifications(SessionBus& bus)
        : m_bus(bus)
    {}
    void show(const QString& title, const QString& body) override;

private:
    SessionBus& m_bus;
};

} // namespace orvanlite::platform
