#pragma once

#include <QObject>
#include <QPointer>

namespace orvanlite::platform {
class Appearance;
}

namespace orvanlite {

class ApplicationStyle;

/// Keeps the application's palette in sync with the user's appearance and accent colour, and makes the style
/// report the motion preference. Where the system draws the widgets itself, no colour is overridden.
class ThemeController final : public QObject {
public:
    explicit ThemeController(platform::Appearance& appearance, QObject* parent = nullptr);
    ~ThemeController() override;

private:
    void apply();

    platform::Appearance& m_appearance;
    QPointer<ApplicationStyle> m_style;
    bool m_startedDark;
};

} // namespace orvanlite
