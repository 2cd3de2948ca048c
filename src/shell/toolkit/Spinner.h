#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace orvanlite {

/// A small turning ring of spokes: something is going on. It turns only while it is seen, and stands still where
/// the user has asked for less motion.
class Spinner final : public QWidget {
    Q_OBJECT

public:
    /// `size` is its width and height in logical pixels.
    Spinner(int size, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void startOrStop();

    int m_step = 0;
    QBasicTimer m_timer;
};

} // namespace orvanlite
