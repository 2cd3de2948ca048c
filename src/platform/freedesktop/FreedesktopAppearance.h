#pragma once

#include "platform/Appearance.h"

#include <QVariant>

#include <chrono>
#include <memory>

class QDBusMessage;

namespace orvanlite::platform {

class AppearanceChannel;
class SessionBus;

/// Settings reported by the desktop portal. They are read on first use, which blocks for at most `patience`;
/// a later reply is reported as a change.
/// Source: XDG Desktop Portal, org.freedesktop.portal.Settings.
class FreedesktopAppearance final : public Appearance {
public:
    explicit FreedesktopAppearance(SessionBus& bus,
                                   std::chrono::milliseconds patience = std::chrono::milliseconds(200));
    ~FreedesktopAppearance() override;

    [[nodiscard]] std::optional<bool> isDark() const override;
    [[nodiscard]] std::optional<Rgb> accentColour() const override;
    [[nodiscard]] bool reducesMotion() const override;
    [[nodiscard]] bool increasesContrast() const override;
    void observe(QObject* context, std::function<void()> handler) override;

private:
    std::unique_ptr<AppearanceChannel> m_channel;
};

} // namespace orvanlite::platform
