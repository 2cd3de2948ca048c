#include "shell/progress/ProgressDecoration.h"

#include "shell/toolkit/AppTheme.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kBarCount = 36;
constexpr int kBarWidth = 5;
constexpr int kBarSpacing = 4;
constexpr int kBandHeight = 52;
constexpr double kLowest = 0.15;
constexpr double kHighest = 0.95;
constexpr double kRandomPart = 0.05;
constexpr double kStepSeconds = 0.12;
constexpr double kPhaseStep = 0.45;
constexpr double kStaggerSeconds = 0.025;
constexpr double kShortestChange = 0.18;
constexpr double kLongestChange = 0.32;

constexpr int kDotCount = 3;
constexpr int kDotSize = 5;
constexpr int kDotSpacing = 5;
constexpr double kDotSeconds = 0.36;

constexpr int kTrackWidth = 320;
constexpr int kTrackHeight = 8;
constexpr double kTrackRadius = 5;
constexpr double kShimmerSeconds = 1.1;
constexpr double kShimmerWidth = 96;

/// From left to right, for both the wave and the bar.
std::array<QColor, 3> gradientColors()
{
    return {AppTheme::accentPurple(), AppTheme::accentBlue(), AppTheme::accentPink()};
}

/// The gradient's colours spread over the bars of the wave.
std::array<QColor, kBarCount> makeBarColors()
{
    const std::array<QColor, 3> stops = gradientColors();
    std::array<QColor, kBarCount> colours;
    for (int bar = 0; bar < kBarCount; ++bar) {
        const double place = 2.0 * bar / (kBarCount - 1);
        const auto left = static_cast<std::size_t>(std::min(place, 1.0));
        const auto share = static_cast<float>(place - double(left));
        const QColor& a = stops[left];
        const QColor& b = stops[left + 1];
        colours[std::size_t(bar)] = QColor::fromRgbF(a.redF() + share * (b.redF() - a.redF()),
                                                     a.greenF() + share * (b.greenF() - a.greenF()),
                                                     a.blueF() + share * (b.blueF() - a.blueF()));
    }
    return colours;
}

/// Deterministic pseudo-random number from 0 to 1.
double randomShare(int bar, int step, unsigned salt)
{
    unsigned bits = unsigned(bar) * 0x9E3779B1U ^ unsigned(step) * 0x85EBCA77U ^ salt;
    bits = (bits ^ (bits >> 15U)) * 0x2C1B3C6DU;
    bits = (bits ^ (bits >> 12U)) * 0x297A2D39U;
    return double((bits ^ (bits >> 15U)) >> 8U) / double(1U << 24U);
}

double easeInOut(double share)
{
    const double t = std::clamp(share, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

/// Target height of a bar from this step on.
double wantedHeight(int bar, int step)
{
    if (step < 0)
        return kLowest;
    const double wave = std::sin(bar * 0.42 + step * kPhaseStep);
    return kLowest + (kHighest - kLowest) * (wave + 1) / 2 + kRandomPart * randomShare(bar, step, 1);
}

} // namespace

double waveHeight(int bar, double seconds)
{
    const double own = seconds - bar * kStaggerSeconds;
    const int step = static_cast<int>(std::floor(own / kStepSeconds));
    // A change lasts longer than a step. The running changes are added up, so that a bar with a new target
    // height in mid-change changes direction smoothly.
    constexpr int kUnderWay = 3;
    double height = wantedHeight(bar, step - kUnderWay);
    for (int change = step - kUnderWay + 1; change <= step; ++change) {
        const double lasts =
            kShortestChange + (kLongestChange - kShortestChange) * randomShare(bar, change, 2);
        const double delta = wantedHeight(bar, change) - wantedHeight(bar, change - 1);
        height += delta * easeInOut((own - change * kStepSeconds) / lasts);
    }
    return std::clamp(height, 0.0, 1.0);
}

WaveBand::WaveBand(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(kBarCount * (kBarWidth + kBarSpacing) - kBarSpacing, kBandHeight);
}

void WaveBand::setTime(double seconds)
{
    m_seconds = seconds;
    update();
}

void WaveBand::paintEvent(QPaintEvent* /*event*/)
{
    static const std::array<QColor, kBarCount> colours = makeBarColors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int bar = 0; bar < kBarCount; ++bar) {
        const double tall = waveHeight(bar, m_seconds) * kBandHeight;
        const QRectF place(bar * (kBarWidth + kBarSpacing), (kBandHeight - tall) / 2, kBarWidth, tall);
        painter.setBrush(colours[std::size_t(bar)]);
        painter.drawRoundedRect(place, 3, 3);
    }
}

ProgressDots::ProgressDots(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(kDotCount * (kDotSize + kDotSpacing) - kDotSpacing, kDotSize);
}

void ProgressDots::setTime(double seconds)
{
    const int lit = static_cast<int>(seconds / kDotSeconds) % kDotCount;
    if (lit == m_lit)
        return;
    m_lit = lit;
    update();
}

void ProgressDots::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int dot = 0; dot < kDotCount; ++dot) {
        painter.setBrush(dot == m_lit ? AppTheme::accentPurple()
                                      : AppTheme::withOpacity(AppTheme::primary(palette()), 0.2));
        painter.drawEllipse(QRectF(dot * (kDotSize + kDotSpacing), 0, kDotSize, kDotSize));
    }
}

ShimmerBar::ShimmerBar(QWidget* parent)
    : QProgressBar(parent)
{
    setRange(0, 100);
    setValue(0);
    setTextVisible(false);
    setFixedSize(kTrackWidth, kTrackHeight);
    setAccessibleName(u"Batch progress"_s);
}

void ShimmerBar::setProgress(double progress)
{
    m_progress = std::clamp(progress, 0.0, 1.0);
    setValue(static_cast<int>(m_progress * 100));
    update(); // the fill may change while the integer value does not
}

void ShimmerBar::setTime(double seconds)
{
    m_shimmer = std::fmod(seconds, kShimmerSeconds) / kShimmerSeconds;
    update(QRectF(0, 0, fillWidth(), height()).toAlignedRect());
}

double ShimmerBar::fillWidth() const { return m_progress * width(); }

void ShimmerBar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double radius = kTrackRadius;
    painter.setBrush(AppTheme::withOpacity(AppTheme::primary(palette()), 0.1));
    painter.drawRoundedRect(rect(), radius, radius);
    const double filled = fillWidth();
    if (filled <= 0)
        return;

    // Clip a short fill from one of minimum width, so that it stays inside the rounded track.
    const QRectF fill(0, 0, std::max(filled, 2 * radius), height());
    if (filled < 2 * radius)
        painter.setClipRect(QRectF(0, 0, filled, height()));
    QLinearGradient colours(fill.topLeft(), fill.topRight());
    const std::array<QColor, 3> stops = gradientColors();
    for (std::size_t stop = 0; stop < stops.size(); ++stop)
        colours.setColorAt(double(stop) / (stops.size() - 1), stops[stop]);
    painter.setBrush(colours);
    painter.drawRoundedRect(fill, radius, radius);

    const double left = -kShimmerWidth + m_shimmer * (filled + kShimmerWidth);
    QLinearGradient light(left, 0, left + kShimmerWidth, 0);
    light.setColorAt(0, AppTheme::withOpacity(Qt::white, 0));
    light.setColorAt(0.5, AppTheme::withOpacity(Qt::white, 0.55));
    light.setColorAt(1, AppTheme::withOpacity(Qt::white, 0));
    painter.setBrush(light);
    painter.drawRoundedRect(fill, radius, radius);
}

} // namespace orvanlite
