#include "shell/AppTheme.h"

#include <QPainter>

namespace orvanlite {

namespace AppTheme {

QColor withOpacity(QColor colour, double opacity)
{
    colour.setAlphaF(static_cast<float>(colour.alphaF() * opacity));
    return colour;
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightnessF() < 0.5F; }

QColor primary(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::WindowText); }

QColor secondary(const QPalette& palette)
{
    return withOpacity(primary(palette), isDark(palette) ? 0.64 : 0.68);
}

QColor accent(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::Highlight); }

QColor bgSurface(const QPalette& palette) { return withOpacity(primary(palette), 0.03); }

QColor glassBg(const QPalette& palette) { return withOpacity(primary(palette), 0.08); }

QColor glassBorder(const QPalette& palette) { return withOpacity(primary(palette), 0.15); }

QColor glassGlow(const QPalette& palette) { return withOpacity(primary(palette), 0.05); }

QColor glassShadow() { return withOpacity(Qt::black, 0.3); }

QColor textPrimary(const QPalette& palette) { return primary(palette); }

QColor textSecondary(const QPalette& palette) { return secondary(palette); }

QColor textTertiary(const QPalette& palette) { return withOpacity(primary(palette), 0.6); }

QColor separator(const QPalette& palette) { return withOpacity(primary(palette), 0.12); }

QColor accentPurple() { return QColor::fromRgbF(0.6F, 0.4F, 0.9F); }

QColor accentBlue() { return QColor::fromRgbF(0.4F, 0.6F, 1.0F); }

QColor accentPink() { return QColor::fromRgbF(0.8F, 0.4F, 0.7F); }

QColor statusEnabled() { return QColor::fromRgbF(0.4F, 0.9F, 0.6F); }

QColor statusDisabled() { return QColor::fromRgbF(0.9F, 0.4F, 0.4F); }

QColor switchOn() { return QColor(52, 199, 89); }

QColor actionText() { return QColor(221, 72, 116); }

QColor defaultAccent(bool dark) { return dark ? QColor(10, 132, 255) : QColor(0, 122, 255); }

QPalette palette(bool dark, const QColor& accent)
{
    const QColor window = dark ? QColor(30, 30, 33) : QColor(252, 252, 253);
    const QColor base = dark ? QColor(24, 24, 27) : QColor(255, 255, 255);
    const QColor alternate = dark ? QColor(34, 34, 38) : QColor(248, 248, 250);
    const QColor text = dark ? QColor(242, 242, 245) : QColor(28, 28, 32);
    const QColor button = dark ? QColor(52, 52, 57) : QColor(255, 255, 255);
    const QColor faded = withOpacity(text, 0.4);

    QPalette made(text, button, button.lighter(dark ? 130 : 105), window.darker(dark ? 160 : 130),
                  window.darker(115), text, Qt::white, base, window);
    made.setColor(QPalette::AlternateBase, alternate);
    made.setColor(QPalette::Highlight, accent);
    made.setColor(QPalette::HighlightedText, Qt::white);
    made.setColor(QPalette::PlaceholderText, withOpacity(text, dark ? 0.64 : 0.68));
    made.setColor(QPalette::ToolTipBase, button);
    made.setColor(QPalette::ToolTipText, text);
    made.setColor(QPalette::Link, accent);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        made.setColor(QPalette::Disabled, role, faded);
    return made;
}

} // namespace AppTheme

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
