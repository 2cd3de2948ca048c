#pragma once

#include <QObject>

namespace orvanlite::platform {
class Appearance;
}

namespace orvanlite {

/// Keeps the application's palette in step with the user's choice of light or dark and of an accent colour. On a
/// system that draws the widgets itself nothing is overridden.
class ThemeController final : public QObject {
public:
    explicit ThemeController(platform::Appearance& appearance, QObject* parent = nullptr);

private:
    void apply();

    platform::Appearance& m_appearance;
    bool m_startedDark;
};

} // namespace orvanlite
