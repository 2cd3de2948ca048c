#pragma once

#include "platform/LoginItemService.h"

namespace orvanlite::platform {

/// The system's service for agents inside the main bundle, which it finds by their identifier alone.
class AppleLoginItemService final : public LoginItemService {
public:
    [[nodiscard]] LoginItemStatus status(const QString& identifier) const override;
    void registerItem(const QString& identifier, const QString& bundlePath) override;
    void unregisterItem(const QString& identifier) override;
};

} // namespace orvanlite::platform
