#pragma once

#include <QSize>

class QPainter;
class QPalette;
class QRectF;

namespace orvanlite {

inline constexpr QSize kSwitchSize(36, 20);
/// How long its knob takes from side to side.
inline constexpr int kSwitchMilliseconds = 180;

/// Draws a switch into the place of its track. Its position is 0 for off, 1 for on, and between them while it slides.
void drawSwitch(QPainter& painter, const QRectF& track, double position, const QPalette& palette);

} // namespace orvanlite
