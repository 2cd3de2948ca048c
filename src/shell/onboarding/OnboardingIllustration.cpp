#include "shell/onboarding/OnboardingIllustration.h"

#include "shell/toolkit/Motion.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace orvanlite {

namespace {

constexpr int kFrameMilliseconds = 33;

} // namespace

OnboardingIllustration::OnboardingIllustration(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize OnboardingIllustration::sizeHint() const { return kArea.toSize(); }

QSize OnboardingIllustration::minimumSizeHint() const { return kArea.toSize() / 2; }

void OnboardingIllustration::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_elapsed.start();
    startOrStop();
}

void OnboardingIllustration::startOrStop()
{
    if (isVisible() && !reducesMotion(this))
        m_timer.start(kFrameMilliseconds, this);
    else
        m_timer.stop();
    update();
}

void OnboardingIllustration::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        startOrStop();
}

void OnboardingIllustration::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void OnboardingIllustration::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        update();
    else
        QWidget::timerEvent(event);
}

void OnboardingIllustration::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = std::min({width() / kArea.width(), height() / kArea.height(), 1.0});
    painter.translate(QRectF(rect()).center());
    painter.scale(scale, scale);
    draw(painter, reducesMotion(this) ? still() : static_cast<double>(m_elapsed.elapsed()) / 1000);
}

} // namespace orvanlite
