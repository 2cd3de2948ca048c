#pragma once

#include <QProgressBar>
#include <QWidget>

namespace orvanlite {

/// The height of a bar of the wave as a share of the full one, `seconds` after it began. Depends on nothing else.
[[nodiscard]] double waveHeight(int bar, double seconds);

/// A band of bars that wave like a level meter.
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

/// Three dots of which one is lit.
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

/// A thin bar with a coloured fill, over which a band of light can slide.
class ShimmerBar final : public QProgressBar {
    Q_OBJECT

public:
    explicit ShimmerBar(QWidget* parent);
    /// Share done, from 0 to 1; finer than the value that is read out.
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
