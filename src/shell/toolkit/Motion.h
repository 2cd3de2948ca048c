#pragma once

#include <QVariantAnimation>

#include <functional>

class QWidget;

namespace orvanlite {

/// Whether the user has asked for reduced motion. Queried from the style, so it may change at any time.
[[nodiscard]] bool reducesMotion(const QWidget* widget);

/// Position of a spring that is released at 0 and oscillates around 1. `response` is the undamped period in
/// seconds.
/// Source: the damped harmonic oscillator.
[[nodiscard]] double springAt(double seconds, double response, double dampingFraction);

/// An animated number. It jumps to its target if the user has asked for reduced motion or the widget is
/// hidden.
class Glide final : public QVariantAnimation {
public:
    /// `changed` runs after every change; by default the widget is repainted.
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
