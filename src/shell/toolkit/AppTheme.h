#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

class QPainter;
class QRect;
class QRectF;

namespace orvanlite {

/// Colours, fonts and spacing of all views. Light and dark variants are derived from the palette argument.
namespace AppTheme {

/// Text and icons at full strength.
[[nodiscard]] QColor primary(const QPalette& palette);
/// De-emphasised text and icons; contrast of at least 4.5:1 on the window background.
[[nodiscard]] QColor secondary(const QPalette& palette);
/// Multiplies the opacity of the colour.
[[nodiscard]] QColor withOpacity(QColor colour, double opacity);
[[nodiscard]] bool isDark(const QPalette& palette);
/// Whether it is a palette of higher contrast; de-emphasised text and borders are then stronger.
[[nodiscard]] bool isHighContrast(const QPalette& palette);
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

/// For icons and tints. For text in one of these colours see legible().
[[nodiscard]] QColor green(const QPalette& palette);
[[nodiscard]] QColor orange(const QPalette& palette);
[[nodiscard]] QColor red(const QPalette& palette);
[[nodiscard]] QColor blue(const QPalette& palette);
[[nodiscard]] QColor gray(const QPalette& palette);
/// The colour, moved towards black or white until text in it has a contrast of 4.5:1 on a card tinted with
/// the same colour.
[[nodiscard]] QColor legible(const QColor& colour, const QPalette& palette);
/// The colour as a background for white text: darkened until the contrast is 4.5:1.
[[nodiscard]] QColor groundForWhite(const QColor& colour);

/// Linear interpolation, including opacity; share 0 is `from`, 1 is `to`.
[[nodiscard]] QColor blended(const QColor& from, const QColor& to, double share);

/// The font with its size multiplied by the factor.
[[nodiscard]] QFont scaled(QFont font, double factor);
[[nodiscard]] QFont semibold(QFont font, double factor = 1);
/// Size factors of captions relative to the text beside them.
inline constexpr double kCaption = 0.92;
inline constexpr double kSmallCaption = 0.82;

/// The application palette. The accent colour is moved towards black or white until its contrast with the
/// window is 3:1, which not all accent colours of the system have.
[[nodiscard]] QPalette palette(bool dark, const QColor& accent, bool highContrast = false);
/// Accent colour for systems that do not provide one.
[[nodiscard]] QColor defaultAccent(bool dark);

/// Spacing scale, in logical pixels.
inline constexpr int kSpace1 = 4;
inline constexpr int kSpace2 = 8;
inline constexpr int kSpace3 = 12;
inline constexpr int kSpace4 = 16;
inline constexpr int kSpace5 = 20;

} // namespace AppTheme

/// Draws a single line of text, elided at the right if it does not fit.
void drawLine(QPainter& painter, const QRect& rect, const QFont& font, const QColor& colour,
              const QString& text, Qt::Alignment side = Qt::AlignLeft);

/// A translucent rounded surface with a thin border.
void liquidGlassCard(QPainter& painter, const QRectF& rect, double cornerRadius, const QPalette& palette);
/// The same, tinted.
void liquidGlassTinted(QPainter& painter, const QRectF& rect, const QColor& tint, double cornerRadius,
                       const QPalette& palette);
/// Draws the tinted surface if active, otherwise nothing.
void liquidGlassConditional(QPainter& painter, const QRectF& rect, bool isActive, const QColor& tint,
                            double cornerRadius, const QPalette& palette);

} // namespace orvanlite
