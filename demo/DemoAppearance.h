#pragma once

#include "platform/Appearance.h"

#include <QPointer>

#include <vector>

namespace orvanlite::demo {

/// An appearance that the demo controls.
class DemoAppearance final : public platform::Appearance {
public:
    explicit DemoAppearance(std::optional<bool> dark)
        : m_dark(dark)
    {}

    void setDark(bool dark)
    {
        m_dark = dark;
        notify();
    }
    void setIncreasesContrast(bool contrast)
    {
        m_contrast = contrast;
        notify();
    }
    void setAccent(std::optional<platform::Rgb> accent)
    {
        m_accent = accent;
        notify();
    }
    [[nodiscard]] std::optional<bool> isDark() const override { return m_dark; }
    [[nodiscard]] std::optional<platform::Rgb> accentColour() const override { return m_accent; }
    [[nodiscard]] bool reducesMotion() const override { return false; }
    [[nodiscard]] bool increasesContrast() const override { return m_contrast; }
    void observe(QObject* context, std::function<void()> handler) override
    {
        m_observers.emplace_back(context, std::move(handler));
    }

private:
    void notify()
    {
        for (const auto& [context, handler] : m_observers) {
            if (context)
                handler();
        }
    }

    std::optional<bool> m_dark;
    std::optional<platform::Rgb> m_accent;
    bool m_contrast = false;
    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> m_observers;
};

} // namespace orvanlite::demo
