#pragma once

#include "platform/UserNotifications.h"

namespace orvanlite::platform {

/// The system's notification banners. The user is asked for leave with the first one.
class AppleUserNotifications final : public UserNotifications {
public:
    void show(const QString& title, const QString& body) override;
};

} // namespace orvanlite::platform
