#include "shell/toolkit/SwitchPainting.h"

#include "shell/toolkit/AppTheme.h"

#include <QPainter>

namespace orvanlite {

namespace {

constexpr double kKnobSize = 16;
constexpr double kKnobTravel = 8; ///< from the centre to either side

} // namespace

void drawSwitch(QPainter& painter, const QRectF& track, double position, const QPalette& palette)
{
    const QColor off = AppTheme::withOpacity(AppTheme::secondary(palette), 0.3);
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppTheme::blended(off, AppTheme::switchOn(), position));
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);

    const QPointF middle = track.center() + QPointF(kKnobTravel * (2 * position - 1), 0);
    painter.setBrush(AppTheme::withOpacity(Qt::black, 0.18));
    painter.drawEllipse(middle + QPointF(0, 0.8), kKnobSize / 2, kKnobSize / 2);
    painter.setBrush(Qt::white);
    painter.drawEllipse(middle, kKnobSize / 2, kKnobSize / 2);
}

} // namespace orvanlite
