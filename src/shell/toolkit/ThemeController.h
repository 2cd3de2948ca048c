#pragma once

#include <QObject>
#include <QPointer>

namespace orvanlite::platform {
class Appearance;
}

namespace orvanlite {

class ApplicationStyle;

/// Gives the application our style and palette on every system. Keeps the palette in sync with the user's
/// appearance, accent colour and contrast, and makes the style report the motion preference.
class ThemeController final : public QObject {
public:
    explicit ThemeController(platform::Appearance& appearance, QObject* parent = nullptr);
    ~ThemeController() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();
    void applyAgain();

    platform::Appearance& m_appearance;
    QPointer<ApplicationStyle> m_style;
    bool m_startedDark;
};

} // namespace orvanlite
