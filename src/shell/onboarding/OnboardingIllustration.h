#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace orvanlite {

/// A small moving picture on sample data. It runs from its beginning whenever it comes into sight, stops when it goes,
/// and shows one still where the user has asked for less motion. Mere decoration: readers do not see it.
class OnboardingIllustration : public QWidget {
public:
    explicit OnboardingIllustration(QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// Whether it is moving now.
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

protected:
    /// Draws the picture as it is so many seconds after it has come into sight, into `kArea` around the origin.
    virtual void draw(QPainter& painter, double seconds) const = 0;
    /// The moment that the still shows.
    [[nodiscard]] virtual double still() const = 0;

    /// Size that draw() has, in logical pixels; the picture is scaled to the room that there is.
    static constexpr QSizeF kArea{440, 176};

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QElapsedTimer m_elapsed;
    QBasicTimer m_timer;
};

} // namespace orvanlite
