#pragma once

#include <QProgressBar>
#include <QWidget>

namespace orvanlite {

/// The relative height of a bar, `seconds` after the wave started. A pure function of its arguments.
[[nodiscard]] double waveHeight(int bar, double seconds);

/// A band of bars that move like a level meter.
class WaveBand final : public QWidget {
    Q_OBJECT

public:
    explicit WaveBand(QWidget* parent);
    void setTime(double seconds);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_seconds = 0;
};

/// Three dots, one of them highlighted.
class ProgressDots final : public QWidget {
    Q_OBJECT

public:
    explicit ProgressDots(QWidget* parent);
    void setTime(double seconds);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_lit = 0;
};

/// A thin progress bar with a coloured fill and a shimmer effect.
class ShimmerBar final : public QProgressBar {
    Q_OBJECT

public:
    explicit ShimmerBar(QWidget* parent);
    /// Progress from 0 to 1, with a finer resolution than the value reported to screen readers.
    void setProgress(double progress);
    void setTime(double seconds);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double fillWidth() const;

    double m_progress = 0;
    double m_shimmer = 0; ///< from 0, left of the bar, to 1, right of it
};

} // namespace orvanlite
