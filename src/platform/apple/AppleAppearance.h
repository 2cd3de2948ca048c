#pragma once

#include "platform/Appearance.h"

namespace orvanlite::platform {

/// The settings under Appearance and Accessibility in System Settings.
class AppleAppearance final : public Appearance {
public:
    [[nodiscard]] std::optional<bool> isDark() const override;
    [[nodiscard]] std::optional<Rgb> accentColour() const override;
    [[nodiscard]] bool reducesMotion() const override;
    [[nodiscard]] bool increasesContrast() const override;
    void observe(QObject* context, std::function<void()> handler) override;
};

} // namespace orvanlite::platform
