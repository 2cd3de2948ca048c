#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QPixmap>
#include <QWidget>

class QLabel;

namespace orvanlite {

class AppearEffect;
class ProgressDots;
class ShimmerBar;
class TabularLabel;
class ViewUpdater;
class WaveBand;
struct ProgressHUDModel;

/// The content of the progress panel. One timer animates the decoration, only while visible and unless the
/// user has asked for reduced motion.
class ProgressHUDView final : public QWidget {
    Q_OBJECT

public:
    static constexpr QSize kSize{400, 210};
    static constexpr int kCornerRadius = 24;

    /// The model outlives the view.
    ProgressHUDView(const ProgressHUDModel& model, QWidget* parent);

    [[nodiscard]] bool isAnimating() const { return m_timer.isActive(); }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void build();
    void render();
    void followMotion();
    void setTime(double seconds);
    [[nodiscard]] QPixmap makeBackground() const;

    const ProgressHUDModel& m_model;
    WaveBand* m_wave;
    QLabel* m_label;
    TabularLabel* m_count;
    ShimmerBar* m_bar;
    TabularLabel* m_percent;
    ProgressDots* m_dots;
    ViewUpdater* m_updates;
    AppearEffect* m_appearing = nullptr; ///< while the panel grows into place
    bool m_isTranslucent;                ///< asked for each batch: a compositor may be started at any time
    QPixmap m_background;
    QBasicTimer m_timer;
    QElapsedTimer m_shown;
};

} // namespace orvanlite
