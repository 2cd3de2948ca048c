#pragma once

#include <QObject>
#include <QPointer>

namespace orvanlite::platform {
class Appearance;
}

namespace orvanlite {

class ApplicationStyle;

/// Keeps the application's palette in step with the user's choice of light or dark and of an accent colour, and lets
/// the style answer how much motion there is. On a system that draws the widgets itself no colour is overridden.
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
