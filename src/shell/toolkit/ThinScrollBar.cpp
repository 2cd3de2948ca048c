#include "shell/toolkit/ThinScrollBar.h"

#include "shell/toolkit/AppTheme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace orvanlite {

namespace {

constexpr int kThickness = 12;
constexpr int kMargin = 3;
constexpr int kShortestHandle = 32;

} // namespace

ThinScrollBar::ThinScrollBar(Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent)
{
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
}

QSize ThinScrollBar::sizeHint() const
{
    return orientation() == Qt::Vertical ? QSize(kThickness, 4 * kShortestHandle)
                                         : QSize(4 * kShortestHandle, kThickness);
}

int ThinScrollBar::length() const
{
    return (orientation() == Qt::Vertical ? height() : width()) - 2 * kMargin;
}

int ThinScrollBar::along(const QPoint& point) const
{
    return (orientation() == Qt::Vertical ? point.y() : point.x()) - kMargin;
}

int ThinScrollBar::handleLength() const
{
    const qint64 range = qint64(maximum()) - minimum() + pageStep();
    const auto proportional = range > 0 ? static_cast<int>(qint64(length()) * pageStep() / range) : length();
    return std::min(length(), std::max(kShortestHandle, proportional));
}

QRect ThinScrollBar::handleRect() const
{
    const int handle = handleLength();
    const int start =
        kMargin + QStyle::sliderPositionFromValue(minimum(), maximum(), sliderPosition(), length() - handle);
    return orientation() == Qt::Vertical ? QRect(kMargin, start, width() - 2 * kMargin, handle)
                                         : QRect(start, kMargin, handle, height() - 2 * kMargin);
}

void ThinScrollBar::paintEvent(QPaintEvent* /*event*/)
{
    if (maximum() <= minimum())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double strength = m_grip >= 0 ? 0.55 : underMouse() ? 0.45 : 0.28;
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppTheme::withOpacity(AppTheme::primary(palette()), strength));
    painter.drawRoundedRect(handleRect(), kMargin, kMargin);
}

void ThinScrollBar::mousePressEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    if (event->button() != Qt::LeftButton)
        return;
    const QRect handle = handleRect();
    if (handle.contains(point)) {
        m_grip = along(point) - along(handle.topLeft());
        setSliderDown(true);
    } else {
        triggerAction(along(point) < along(handle.topLeft()) ? SliderPageStepSub : SliderPageStepAdd);
    }
    update();
}

void ThinScrollBar::mouseMoveEvent(QMouseEvent* event)
{
    if (m_grip < 0)
        return;
    const int position = along(event->position().toPoint()) - m_grip;
    setSliderPosition(
        QStyle::sliderValueFromPosition(minimum(), maximum(), position, length() - handleLength()));
}

void ThinScrollBar::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    m_grip = -1;
    setSliderDown(false);
    update();
}

} // namespace orvanlite
