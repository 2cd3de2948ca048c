#include "shell/toolkit/Spinner.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Motion.h"

#include <QPainter>
#include <QTimerEvent>

namespace orvanlite {

namespace {

constexpr int kSpokes = 8;
constexpr int kStepMilliseconds = 110;

} // namespace

Spinner::Spinner(int size, QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(size, size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Spinner::startOrStop()
{
    if (isVisible() && !reducesMotion(this))
        m_timer.start(kStepMilliseconds, this);
    else
        m_timer.stop();
}

void Spinner::showEvent(QShowEvent* /*event*/) { startOrStop(); }

void Spinner::hideEvent(QHideEvent* /*event*/) { startOrStop(); }

void Spinner::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        startOrStop();
}

void Spinner::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    m_step = (m_step + 1) % kSpokes;
    update();
}

void Spinner::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = width() / 2.0;
    painter.translate(radius, radius);
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        // The leading spoke is the most opaque; the others fade out behind it.
        const int behind = (m_step - spoke + kSpokes) % kSpokes;
        const double opacity = 0.75 - 0.08 * behind;
        painter.setPen(QPen(AppTheme::withOpacity(AppTheme::primary(palette()), opacity), radius / 4.5,
                            Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius * 0.88));
        painter.rotate(360.0 / kSpokes);
    }
}

} // namespace orvanlite
