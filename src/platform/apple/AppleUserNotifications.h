#pragma once

#include "platform/UserNotifications.h"

namespace orvanlite::platform {

/// The system's notification banners. The first one asks the user for permission.
class AppleUserNotifications final : public UserNotifications {
public:
    void show(const QString& title, const QString& body) override;
};

} // namespace orvanlite::platform
