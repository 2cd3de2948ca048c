#pragma once

#include <QBasicTimer>
#include <QLabel>

namespace orvanlite::platform {
class Clock;
}

namespace orvanlite {

/// A large text with a conical gradient that turns once every 6 seconds, while visible and unless the user
/// has asked for reduced motion.
class SidebarTitle final : public QLabel {
    Q_OBJECT

public:
    SidebarTitle(const QString& text, const platform::Clock& clock, QWidget* parent);

    [[nodiscard]] bool isTurning() const { return m_timer.isActive(); }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool isSeen() const;
    void startOrStop();
    void makeMask();

    const platform::Clock& m_clock;
    QBasicTimer m_timer;
    QPixmap m_mask;  ///< the text, drawn once
    QPixmap m_frame; ///< the text in the current colours
};

} // namespace orvanlite
