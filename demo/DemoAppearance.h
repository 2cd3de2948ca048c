#pragma once

#include "platform/Appearance.h"

#include <QPointer>

#include <vector>

namespace orvanlite::demo {

/// A light or dark appearance that the demo controls.
class DemoAppearance final : public platform::Appearance {
public:
    explicit DemoAppearance(std::optional<bool> dark)
        : m_dark(dark)
    {}

    void setDark(bool dark)
    {
        m_dark = dark;
        for (const auto& [context, handler] : m_observers) {
            if (context)
                handler();
        }
    }

    [[nodiscard]] std::optional<bool> isDark() const override { return m_dark; }
    [[nodiscard]] std::optional<platform::Rgb> accentColour() const override { return std::nullopt; }
    [[nodiscard]] bool reducesMotion() const override { return false; }
    void observe(QObject* context, std::function<void()> handler) override
    {
        m_observers.emplace_back(context, std::move(handler));
    }

private:
    std::optional<bool> m_dark;
    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> m_observers;
};

} // namespace orvanlite::demo
