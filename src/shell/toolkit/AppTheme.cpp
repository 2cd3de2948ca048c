#include "shell/toolkit/AppTheme.h"

#include "shell/toolkit/FocusRing.h"

#include <QPainter>

#include <cmath>

namespace orvanlite {

namespace AppTheme {

namespace {

/// Strongest tint of a background that carries text of the same colour.
constexpr double kStrongestTint = 0.28;
constexpr double kLegibleContrast = 4.5;
constexpr double kHighContrast = 7;
constexpr double kVisibleContrast = 3; ///< of shapes
constexpr int kSteps = 20;             ///< between a colour and black or white

/// Source: WCAG 2.1, relative luminance.
double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor mixed(const QColor& from, const QColor& to, double share)
{
    const auto part = [share](double f, double t) { return static_cast<float>(f + share * (t - f)); };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()));
}

/// The colour, moved towards the other end until it has this contrast with the background.
QColor movedUntil(const QColor& colour, const QColor& end, const QColor& background, double wanted)
{
    for (int step = 0; step < kSteps; ++step) {
        const QColor moved = mixed(colour, end, double(step) / kSteps);
        if (contrast(moved, background) >= wanted)
            return moved;
    }
    return end;
}

/// One opacity for normal and one for higher contrast.
QColor faded(const QPalette& palette, double opacity, double highContrast)
{
    return withOpacity(primary(palette), isHighContrast(palette) ? highContrast : opacity);
}

constexpr double kSecondaryInDark = 0.64;
constexpr double kSecondaryInLight = 0.68;
constexpr double kSecondaryInHighContrast = 0.9;

} // namespace

QColor withOpacity(QColor colour, double opacity)
{
    colour.setAlphaF(static_cast<float>(colour.alphaF() * opacity));
    return colour;
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightnessF() < 0.5F; }

QColor primary(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::WindowText); }

bool isHighContrast(const QPalette& palette)
{
    const QRgb window = palette.color(QPalette::Active, QPalette::Window).rgb();
    const QRgb text = primary(palette).rgb();
    const QRgb black = QColor(Qt::black).rgb();
    const QRgb white = QColor(Qt::white).rgb();
    return (window == white && text == black) || (window == black && text == white);
}

QColor secondary(const QPalette& palette)
{
    return faded(palette, isDark(palette) ? kSecondaryInDark : kSecondaryInLight, kSecondaryInHighContrast);
}

QColor accent(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::Highlight); }

QColor bgSurface(const QPalette& palette) { return withOpacity(primary(palette), 0.03); }

QColor glassBg(const QPalette& palette) { return withOpacity(primary(palette), 0.08); }

QColor glassBorder(const QPalette& palette) { return faded(palette, 0.15, 0.7); }

QColor glassGlow(const QPalette& palette) { return withOpacity(primary(palette), 0.05); }

QColor glassShadow() { return withOpacity(Qt::black, 0.3); }

QColor textPrimary(const QPalette& palette) { return primary(palette); }

QColor textSecondary(const QPalette& palette) { return secondary(palette); }

QColor textTertiary(const QPalette& palette) { return faded(palette, 0.6, 0.9); }

QColor separator(const QPalette& palette) { return faded(palette, 0.12, 0.7); }

QColor accentPurple() { return QColor::fromRgbF(0.6F, 0.4F, 0.9F); }

QColor accentBlue() { return QColor::fromRgbF(0.4F, 0.6F, 1.0F); }

QColor accentPink() { return QColor::fromRgbF(0.8F, 0.4F, 0.7F); }

QColor statusEnabled() { return QColor::fromRgbF(0.4F, 0.9F, 0.6F); }

QColor statusDisabled() { return QColor::fromRgbF(0.9F, 0.4F, 0.4F); }

QColor switchOn() { return QColor(52, 199, 89); }

QColor actionText() { return QColor(221, 72, 116); }

QColor green(const QPalette& palette) { return isDark(palette) ? QColor(48, 209, 88) : QColor(40, 167, 69); }

QColor orange(const QPalette& palette)
{
    return isDark(palette) ? QColor(255, 159, 10) : QColor(235, 125, 0);
}

QColor red(const QPalette& palette) { return isDark(palette) ? QColor(255, 95, 86) : QColor(224, 49, 49); }

QColor blue(const QPalette& palette) { return isDark(palette) ? QColor(64, 156, 255) : QColor(0, 112, 230); }

QColor gray(const QPalette& palette)
{
    return isDark(palette) ? QColor(152, 152, 157) : QColor(130, 130, 136);
}

QColor legible(const QColor& colour, const QPalette& palette)
{
    const QColor end = isDark(palette) ? Qt::white : Qt::black;
    // A card is the window colour mixed with about a tenth of the text colour.
    const QColor card = mixed(palette.color(QPalette::Active, QPalette::Window), primary(palette), 0.1);
    return movedUntil(colour, end, mixed(card, colour, kStrongestTint),
                      isHighContrast(palette) ? kHighContrast : kLegibleContrast);
}

QColor groundForWhite(const QColor& colour)
{
    for (int step = 0; step < kSteps; ++step) {
        const QColor background = mixed(colour, Qt::black, double(step) / kSteps);
        if ((luminance(Qt::white) + 0.05) / (luminance(background) + 0.05) >= kLegibleContrast)
            return background;
    }
    return Qt::black;
}

QColor blended(const QColor& from, const QColor& to, double share)
{
    QColor colour = mixed(from, to, share);
    colour.setAlphaF(static_cast<float>(from.alphaF() + share * (to.alphaF() - from.alphaF())));
    return colour;
}

QFont scaled(QFont font, double factor)
{
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

QFont semibold(QFont font, double factor)
{
    font.setWeight(QFont::DemiBold);
    return factor == 1 ? font : scaled(font, factor);
}

QColor defaultAccent(bool dark) { return dark ? QColor(10, 132, 255) : QColor(0, 122, 255); }

QPalette palette(bool dark, const QColor& accent, bool highContrast)
{
    const QColor end = dark ? Qt::white : Qt::black; // the extreme on the text's side
    const QColor start = dark ? Qt::black : Qt::white;
    const auto either = [highContrast](const QColor& strong, const QColor& usual) {
        return highContrast ? strong : usual;
    };
    const QColor window = either(start, dark ? QColor(30, 30, 33) : QColor(252, 252, 253));
    const QColor base = either(start, dark ? QColor(24, 24, 27) : QColor(255, 255, 255));
    const QColor alternate = either(start, dark ? QColor(34, 34, 38) : QColor(248, 248, 250));
    const QColor text = either(end, dark ? QColor(242, 242, 245) : QColor(28, 28, 32));
    const QColor button = dark ? QColor(52, 52, 57) : QColor(255, 255, 255);
    const QColor highlight =
        movedUntil(accent, end, window, highContrast ? kLegibleContrast : kVisibleContrast);
    const bool takesWhite = contrast(highlight, Qt::white) >= contrast(highlight, Qt::black);

    QPalette result(text, button, button.lighter(dark ? 130 : 105), window.darker(dark ? 160 : 130),
                    window.darker(115), text, Qt::white, base, window);
    result.setColor(QPalette::AlternateBase, alternate);
    result.setColor(QPalette::Mid, either(mixed(window, end, 0.7),
                                          dark ? window.lighter(200) : window.darker(118))); // dividers
    result.setColor(QPalette::Highlight, highlight);
    result.setColor(QPalette::HighlightedText, takesWhite ? Qt::white : Qt::black);
    result.setColor(QPalette::PlaceholderText, secondary(result));
    result.setColor(QPalette::ToolTipBase, button);
    result.setColor(QPalette::ToolTipText, text);
    result.setColor(QPalette::Link, highlight);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        result.setColor(QPalette::Disabled, role, withOpacity(text, highContrast ? 0.6 : 0.4));
    return result;
}

} // namespace AppTheme

void drawLine(QPainter& painter, const QRect& rect, const QFont& font, const QColor& colour,
              const QString& text, Qt::Alignment side)
{
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(rect, int(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, rect.width()));
}

void drawFocusRing(QPainter& painter, const QRectF& rect, double cornerRadius, const QColor& colour,
                   double width)
{
    painter.setPen(QPen(colour, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect, cornerRadius, cornerRadius);
}

namespace {

void fillSurface(QPainter& painter, const QRectF& rect, double cornerRadius, const QColor& fill,
                 const QColor& border)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(border, 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    painter.restore();
}

} // namespace

void liquidGlassCard(QPainter& painter, const QRectF& rect, double cornerRadius, const QPalette& palette)
{
    fillSurface(painter, rect, cornerRadius, AppTheme::glassGlow(palette), AppTheme::glassBorder(palette));
}

void liquidGlassTinted(QPainter& painter, const QRectF& rect, const QColor& tint, double cornerRadius,
                       const QPalette& palette)
{
    const double strength = AppTheme::isDark(palette) ? 0.28 : 0.18;
    fillSurface(painter, rect, cornerRadius, AppTheme::withOpacity(tint, strength),
                AppTheme::withOpacity(tint, 0.4));
}

void liquidGlassConditional(QPainter& painter, const QRectF& rect, bool isActive, const QColor& tint,
                            double cornerRadius, const QPalette& palette)
{
    if (isActive)
        liquidGlassTinted(painter, rect, tint, cornerRadius, palette);
}

} // namespace orvanlite
