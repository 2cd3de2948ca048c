#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ThemeController.h"
#include "support/Fakes.h"

#include <QApplication>
#include <QImage>
#include <QWindow>

#include <cmath>

namespace orvanlite::test {

namespace {

/// Source: WCAG 2.1, relative luminance and contrast ratio.
double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor over(const QColor& ground, const QColor& colour)
{
    const double a = colour.alphaF();
    const auto part = [a](double g, double c) { return static_cast<float>(g + a * (c - g)); };
    return QColor::fromRgbF(part(ground.redF(), colour.redF()), part(ground.greenF(), colour.greenF()),
                            part(ground.blueF(), colour.blueF()));
}

double contrast(const QColor& ground, const QColor& text)
{
    const double a = luminance(ground) + 0.05;
    const double b = luminance(over(ground, text)) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

} // namespace

TEST(AppThemeTest, TextIsLegibleInLightAndDark)
{
    for (const auto& [dark, highContrast] :
         {std::pair{false, false}, {true, false}, {false, true}, {true, true}}) {
        SCOPED_TRACE(dark ? "dark" : "light");
        const QPalette palette = AppTheme::palette(dark, AppTheme::defaultAccent(dark), highContrast);
        EXPECT_EQ(AppTheme::isDark(palette), dark);
        EXPECT_EQ(AppTheme::isHighContrast(palette), highContrast);
        EXPECT_GE(contrast(palette.color(QPalette::Window), AppTheme::glassBorder(palette)),
                  highContrast ? 3 : 1);
        // The window's background at its strongest, a selected row and a badge on it.
        const QColor window =
            over(palette.color(QPalette::Window), AppTheme::withOpacity(AppTheme::primary(palette), 0.05));
        const QColor selected = over(window, AppTheme::withOpacity(AppTheme::accent(palette), 0.26));
        const QColor badge = over(selected, AppTheme::withOpacity(AppTheme::accent(palette), 0.1));
        for (const QColor& ground : {window, selected, badge})
            EXPECT_GE(contrast(ground, AppTheme::primary(palette)), 4.5);
        for (const QColor& text : {AppTheme::secondary(palette), palette.color(QPalette::PlaceholderText)})
            EXPECT_GE(contrast(window, text), 4.5);
        EXPECT_GE(contrast(selected, AppTheme::secondary(palette)), 4.5);
        // A tinted button or strip on a card, under the pointer.
        const QColor card = over(window, AppTheme::glassGlow(palette));
        for (auto* tint : {&AppTheme::green, &AppTheme::orange, &AppTheme::red, &AppTheme::blue}) {
            const QColor colour = tint(palette);
            const QColor ground = over(card, AppTheme::withOpacity(colour, 0.26));
            EXPECT_GE(contrast(ground, AppTheme::legible(colour, palette)), 4.5) << qPrintable(colour.name());
            EXPECT_GE(contrast(ground, AppTheme::primary(palette)), 4.5);
        }
    }
}

TEST(AppThemeTest, FollowsTheUsersChoiceAtRunTime)
{
    const QPalette before = QApplication::palette();
    FakeAppearance appearance;
    appearance.dark = false;
    const ThemeController theme(appearance);
    EXPECT_FALSE(AppTheme::isDark(QApplication::palette()));
    appearance.dark = true;
    appearance.accent = platform::Rgb{1, 0.5, 0};
    appearance.notify();
    EXPECT_TRUE(AppTheme::isDark(QApplication::palette()));
    EXPECT_EQ(AppTheme::accent(QApplication::palette()).rgb(), QColor(255, 128, 0).rgb());
    appearance.contrast = true;
    appearance.notify();
    EXPECT_TRUE(AppTheme::isHighContrast(QApplication::palette()));
    // macOS sets palettes for single classes of widgets, at the start and with each change of its theme.
    QApplication::setPalette(before, "QLineEdit");
    QWindow window;
    QEvent changed(QEvent::ThemeChange);
    QCoreApplication::sendEvent(&window, &changed);
    turnEventLoop();
    EXPECT_EQ(QApplication::palette("QLineEdit").color(QPalette::Text), QColor(Qt::white));
    QApplication::setPalette(before);
}

TEST(AppThemeTest, EveryAccentColourOfTheMacIsVisible)
{
    for (const QRgb rgb :
         {0x007AFF, 0xA550A7, 0xF74F9E, 0xFF5257, 0xF7821B, 0xFFC600, 0x62BA46, 0x8C8C8C, 0xB3D7FF}) {
        for (const bool dark : {false, true}) {
            SCOPED_TRACE(rgb);
            const QPalette palette = AppTheme::palette(dark, QColor(rgb));
            EXPECT_GE(contrast(palette.color(QPalette::Window), AppTheme::accent(palette)), 3);
            EXPECT_GE(contrast(AppTheme::accent(palette), palette.color(QPalette::HighlightedText)), 4.5);
        }
    }
}

TEST(IconsTest, EveryFormatHasAnIconThatTakesTheColour)
{
    for (const PluginFormat format : allCases<PluginFormat>) {
        SCOPED_TRACE(qPrintable(rawValue(format)));
        const QImage image = iconPixmap(formatIcon(format), 24, Qt::red, 2).toImage();
        EXPECT_EQ(image.width(), 48);
        int drawn = 0;
        for (int i = 0; i < 48 * 48; ++i)
            drawn += image.pixelColor(i % 48, i / 48) == Qt::red ? 1 : 0;
        EXPECT_GT(drawn, 40);
    }
}

} // namespace orvanlite::test
