#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace orvanlite {

/// A small busy indicator of rotating spokes. It is animated only while visible, and not if the user has
/// asked for reduced motion.
class Spinner final : public QWidget {
    Q_OBJECT

public:
    /// `size` is the width and height in logical pixels.
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
