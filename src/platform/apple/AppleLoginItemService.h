#pragma once

#include "platform/LoginItemService.h"

namespace orvanlite::platform {

/// SMAppService, which finds agents inside the main bundle by their identifier.
class AppleLoginItemService final : public LoginItemService {
public:
    [[nodiscard]] LoginItemStatus status(const QString& identifier) const override;
    void registerItem(const QString& identifier, const QString& bundlePath) override;
    void unregisterItem(const QString& identifier) override;
};

} // namespace orvanlite::platform
