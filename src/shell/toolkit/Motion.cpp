#include "shell/toolkit/Motion.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

#include <cmath>
#include <numbers>
#include <utility>

namespace orvanlite {

bool reducesMotion(const QWidget* widget)
{
    // Not widget->style(): a style set on a single widget does not know the motion preference.
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, widget) == 0;
}

double springAt(double seconds, double response, double dampingFraction)
{
    if (seconds <= 0)
        return 0;
    const double omega = 2 * std::numbers::pi / response;
    const double damped = omega * std::sqrt(1 - dampingFraction * dampingFraction);
    const double swing =
        std::cos(damped * seconds) + dampingFraction * omega / damped * std::sin(damped * seconds);
    return 1 - std::exp(-dampingFraction * omega * seconds) * swing;
}

Glide::Glide(double start, int milliseconds, QWidget* widget, std::function<void()> changed)
    : QVariantAnimation(widget)
    , m_widget(*widget)
    , m_changed(std::move(changed))
    , m_value(start)
{
    setDuration(milliseconds);
    setEasingCurve(QEasingCurve::InOutQuad);
    connect(this, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& now) { set(now.toDouble()); });
    // valueChanged may not be emitted if the animation is reversed before its first step.
    connect(this, &QAbstractAnimation::finished, this, [this] { set(endValue().toDouble()); });
}

void Glide::set(double value)
{
    m_value = value;
    if (m_changed)
        m_changed();
    else
        m_widget.update();
}

void Glide::jumpTo(double target)
{
    stop();
    set(target);
}

void Glide::glideTo(double target) { glideFrom(m_value, target); }

void Glide::glideFrom(double start, double target)
{
    stop();
    if (start == target || !m_widget.isVisible() || reducesMotion(&m_widget)) {
        set(target);
        return;
    }
    set(start);
    setStartValue(start);
    setEndValue(target);
    QVariantAnimation::start();
}

} // namespace orvanlite
