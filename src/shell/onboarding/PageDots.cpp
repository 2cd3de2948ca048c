#include "shell/onboarding/PageDots.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Motion.h"

#include <QPainter>
#include <QVariantAnimation>

#include <algorithm>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr double kDot = 6;
constexpr double kCurrentDot = 18;
constexpr double kGap = 7;

constexpr double kResponse = 0.3;
constexpr double kDampingFraction = 0.7;
constexpr double kSeconds = 0.7; ///< the spring has settled by then

} // namespace

PageDots::PageDots(int count, QWidget* parent)
    : QWidget(parent)
    , m_count(count)
    , m_animation(new QVariantAnimation(this))
{
    setObjectName(u"pageDots"_s);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_animation->setStartValue(0.0);
    m_animation->setEndValue(kSeconds);
    m_animation->setDuration(static_cast<int>(1000 * kSeconds));
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_share = springAt(value.toDouble(), kResponse, kDampingFraction);
        update();
    });
    connect(m_animation, &QVariantAnimation::finished, this, [this] {
        m_share = 1;
        update();
    });
}

QSize PageDots::sizeHint() const
{
    return {static_cast<int>((m_count - 1) * (kDot + kGap) + kCurrentDot) + 8, static_cast<int>(kDot) + 4};
}

void PageDots::setCurrent(int page)
{
    m_previous = std::exchange(m_current, page);
    setAccessibleName(u"Page %1 of %2"_s.arg(page + 1).arg(m_count));
    m_animation->stop();
    m_share = 1;
    if (!reducesMotion(this) && isVisible() && m_previous != page)
        m_animation->start();
    update();
}

void PageDots::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    double x = 4;
    for (int dot = 0; dot < m_count; ++dot) {
        const double share = dot == m_current ? m_share : dot == m_previous ? 1 - m_share : 0;
        const double width = std::max(kDot / 2, kDot + (kCurrentDot - kDot) * share);
        const double strength = std::clamp(share, 0.0, 1.0);
        painter.setBrush(AppTheme::withOpacity(AppTheme::secondary(palette()), 0.55 * (1 - strength)));
        const QRectF place(x, (height() - kDot) / 2, width, kDot);
        painter.drawRoundedRect(place, kDot / 2, kDot / 2);
        painter.setBrush(AppTheme::withOpacity(AppTheme::accent(palette()), strength));
        painter.drawRoundedRect(place, kDot / 2, kDot / 2);
        x += width + kGap;
    }
}

} // namespace orvanlite
