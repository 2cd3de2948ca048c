#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace orvanlite {

/// A small animation with sample data. It restarts when shown, stops when hidden, and is a still image if the
/// user has asked for reduced motion. Purely decorative, so screen readers ignore it.
class OnboardingIllustration : public QWidget {
public:
    explicit OnboardingIllustration(QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

protected:
    /// Draws the frame at this time after being shown, into `kArea` centred on the origin.
    virtual void draw(QPainter& painter, double seconds) const = 0;
    /// Time of the frame to show without motion, in seconds.
    [[nodiscard]] virtual double still() const = 0;

    /// Size of the canvas of draw(), in logical pixels; scaled down if the widget is smaller.
    static constexpr QSizeF kArea{440, 176};

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void startOrStop();

    QElapsedTimer m_elapsed;
    QBasicTimer m_timer;
};

} // namespace orvanlite
