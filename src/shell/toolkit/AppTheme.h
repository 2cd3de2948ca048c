#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

class QPainter;
class QRect;
class QRectF;

namespace orvanlite {

/// The colours of all views. What depends on light and dark is derived from the palette that is passed.
namespace AppTheme {

/// Text and signs of full strength.
[[nodiscard]] QColor primary(const QPalette& palette);
/// Text and signs of lesser weight; at least 4.5 to 1 on the window's ground.
[[nodiscard]] QColor secondary(const QPalette& palette);
/// The colour with its opacity multiplied.
[[nodiscard]] QColor withOpacity(QColor colour, double opacity);
[[nodiscard]] bool isDark(const QPalette& palette);
/// The user's accent colour.
[[nodiscard]] QColor accent(const QPalette& palette);

[[nodiscard]] QColor bgSurface(const QPalette& palette);
[[nodiscard]] QColor glassBg(const QPalette& palette);
[[nodiscard]] QColor glassBorder(const QPalette& palette);
[[nodiscard]] QColor glassGlow(const QPalette& palette);
[[nodiscard]] QColor glassShadow();
[[nodiscard]] QColor textPrimary(const QPalette& palette);
[[nodiscard]] QColor textSecondary(const QPalette& palette);
[[nodiscard]] QColor textTertiary(const QPalette& palette);
/// Thin lines between regions.
[[nodiscard]] QColor separator(const QPalette& palette);

[[nodiscard]] QColor accentPurple();
[[nodiscard]] QColor accentBlue();
[[nodiscard]] QColor accentPink();
[[nodiscard]] QColor statusEnabled();
[[nodiscard]] QColor statusDisabled();
/// A switch that is on.
[[nodiscard]] QColor switchOn();
/// Plain text buttons of the tool row.
[[nodiscard]] QColor actionText();

/// Signs and tints. For text in one of them, see legible().
[[nodiscard]] QColor green(const QPalette& palette);
[[nodiscard]] QColor orange(const QPalette& palette);
[[nodiscard]] QColor red(const QPalette& palette);
[[nodiscard]] QColor blue(const QPalette& palette);
[[nodiscard]] QColor gray(const QPalette& palette);
/// The colour, moved as far to black or white as text in it needs for at least 4.5 to 1 on a card of the same tint.
[[nodiscard]] QColor legible(const QColor& colour, const QPalette& palette);
/// The colour as a ground for white text of that opacity: moved as far to black as that needs for at least 4.5 to 1.
[[nodiscard]] QColor groundForWhite(const QColor& colour, double opacity = 1);

/// The colour at that share of the way from one to the other, with its opacity.
[[nodiscard]] QColor blended(const QColor& from, const QColor& to, double share);

/// The font at another size, times that factor.
[[nodiscard]] QFont scaled(QFont font, double factor);
[[nodiscard]] QFont semibold(QFont font, double factor = 1);
/// Sizes of captions beside the text that they go with.
inline constexpr double kCaption = 0.92;
inline constexpr double kSmallCaption = 0.82;

/// The palette of the application in light or dark.
[[nodiscard]] QPalette palette(bool dark, const QColor& accent);
/// The accent of systems that name none.
[[nodiscard]] QColor defaultAccent(bool dark);

/// The one spacing scale, in logical pixels.
inline constexpr int kSpace1 = 4;
inline constexpr int kSpace2 = 8;
inline constexpr int kSpace3 = 12;
inline constexpr int kSpace4 = 16;
inline constexpr int kSpace5 = 20;

} // namespace AppTheme

/// Writes one line into the rectangle, with an ellipsis where it is too long.
void drawLine(QPainter& painter, const QRect& rect, const QFont& font, const QColor& colour,
              const QString& text, Qt::Alignment side = Qt::AlignLeft);

/// A translucent rounded surface with a thin border.
void liquidGlassCard(QPainter& painter, const QRectF& rect, double cornerRadius, const QPalette& palette);
/// The same, tinted.
void liquidGlassTinted(QPainter& painter, const QRectF& rect, const QColor& tint, double cornerRadius,
                       const QPalette& palette);
/// Tinted while active, otherwise nothing.
void liquidGlassConditional(QPainter& painter, const QRectF& rect, bool isActive, const QColor& tint,
                            double cornerRadius, const QPalette& palette);

} // namespace orvanlite
