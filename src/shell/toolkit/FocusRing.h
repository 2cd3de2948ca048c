#pragma once

#include <Qt>

class QColor;
class QPainter;
class QRectF;

namespace orvanlite {

/// Whether the focus ring is visible after a focus change for this reason. Activating a window keeps the
/// previous state.
[[nodiscard]] inline bool showsFocusAfter(Qt::FocusReason reason, bool before)
{
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
        return before;
    return reason != Qt::MouseFocusReason;
}

void drawFocusRing(QPainter& painter, const QRectF& rect, double cornerRadius, const QColor& colour,
                   double width = 2);

} // namespace orvanlite
