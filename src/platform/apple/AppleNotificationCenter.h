#pragma once

#include "platform/NotificationCenter.h"

namespace orvanlite::platform {

/// The distributed notification centre of the user's session.
class AppleNotificationCenter final : public NotificationCenter {
public:
    void post(const QString& name, const QVariantMap& userInfo) override;
    void observe(const QString& name, QObject* context, Handler handler) override;
};

} // namespace orvanlite::platform
