#pragma once

#include <QVariantAnimation>

#include <functional>

class QWidget;

namespace orvanlite {

/// True where the user has asked for less motion. The style answers, so that it may change at any time.
[[nodiscard]] bool reducesMotion(const QWidget* widget);

/// Where a spring that is released at 0 is on its way to 1, beyond which it swings. `response` is the period without
/// damping, in seconds. Source: the damped harmonic oscillator.
[[nodiscard]] double springAt(double seconds, double response, double dampingFraction);

/// A number that glides to its target. It is there at once where the user has asked for less motion, and while the
/// widget is hidden.
class Glide final : public QVariantAnimation {
public:
    /// `changed` runs after every change; without it the widget is repainted.
    Glide(double start, int milliseconds, QWidget* widget, std::function<void()> changed = {});

    [[nodiscard]] double value() const { return m_value; }
    void glideTo(double target);
    void glideFrom(double start, double target);
    void jumpTo(double target);

private:
    void set(double value);

    QWidget& m_widget;
    std::function<void()> m_changed;
    double m_value;
};

} // namespace orvanlite
