#pragma once

#include <QSize>

class QPainter;
class QPalette;
class QRectF;

namespace orvanlite {

inline constexpr QSize kSwitchSize(36, 20);
/// Duration of the knob animation.
inline constexpr int kSwitchMilliseconds = 180;

/// Draws a switch that fills the track rectangle. Position 0 is off, 1 is on.
void drawSwitch(QPainter& painter, const QRectF& track, double position, const QPalette& palette);

} // namespace orvanlite
