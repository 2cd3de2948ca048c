#pragma once

#include <QString>

namespace orvanlite::platform {

/// Short messages that the system shows outside any window.
class UserNotifications {
public:
    UserNotifications() = default;
    UserNotifications(const UserNotifications&) = delete;
    UserNotifications& operator=(const UserNotifications&) = delete;
    virtual ~UserNotifications() = default;

    /// Does nothing where the system has no such service.
    virtual void show(const QString& title, const QString& body) = 0;
};

} // namespace orvanlite::platform
