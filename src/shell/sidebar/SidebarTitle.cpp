#include "shell/sidebar/SidebarTitle.h"

#include "platform/Clock.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/RelativeFont.h"

#include <QPainter>
#include <QTimerEvent>
#include <QWindow>

#include <cmath>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr double kTurnSeconds = 6;
constexpr int kFrameMilliseconds = 75; // about 13 frames per second: smooth at this speed, and cheap
constexpr double kTitleSize = 1.9;

} // namespace

SidebarTitle::SidebarTitle(const QString& text, const platform::Clock& clock, QWidget* parent)
    : QLabel(text, parent)
    , m_clock(clock)
{
    setObjectName(u"sidebarTitle"_s);
    setRelativeFont(this, kTitleSize, QFont::Bold);
}

QSize SidebarTitle::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth(), QLabel::minimumSizeHint().height()};
}

bool SidebarTitle::isSeen() const
{
    const QWindow* handle = window()->windowHandle();
    return isVisible() && !window()->isMinimized() && handle && handle->isExposed();
}

void SidebarTitle::startOrStop()
{
    const bool turns = isSeen() && !reducesMotion(this);
    if (turns && !m_timer.isActive())
        m_timer.start(kFrameMilliseconds, this);
    else if (!turns)
        m_timer.stop();
    update();
}

void SidebarTitle::showEvent(QShowEvent* event)
{
    QLabel::showEvent(event);
    // A window can also be minimised, covered or on another desktop.
    window()->windowHandle()->installEventFilter(this);
    startOrStop();
}

void SidebarTitle::hideEvent(QHideEvent* event)
{
    QLabel::hideEvent(event);
    m_timer.stop();
}

bool SidebarTitle::eventFilter(QObject* watched, QEvent* event)
{
    const bool shown = QLabel::eventFilter(watched, event);
    if (event->type() == QEvent::Expose || event->type() == QEvent::WindowStateChange)
        QMetaObject::invokeMethod(this, &SidebarTitle::startOrStop, Qt::QueuedConnection);
    return shown;
}

void SidebarTitle::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        update();
}

void SidebarTitle::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    m_mask = {};
    if (event->type() == QEvent::StyleChange)
        startOrStop();
}

void SidebarTitle::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    m_mask = {};
}

void SidebarTitle::makeMask()
{
    QFont fitting = font();
    const double width = QFontMetricsF(fitting).horizontalAdvance(text());
    if (width > this->width()) // with large fonts in a narrow sidebar
        fitting.setPointSizeF(fitting.pointSizeF() * std::max(0.3, (this->width() - 1) / width));
    const QFontMetricsF metrics(fitting);
    const QSizeF size(std::ceil(metrics.horizontalAdvance(text())) + 1, std::ceil(metrics.height()));
    m_mask = QPixmap((size * devicePixelRatioF()).toSize());
    m_mask.setDevicePixelRatio(devicePixelRatioF());
    m_mask.fill(Qt::transparent);
    m_frame = m_mask;
    QPainter painter(&m_mask);
    painter.setFont(fitting);
    painter.setPen(Qt::black);
    painter.drawText(QRectF(QPointF(), size), Qt::AlignLeft | Qt::AlignVCenter, text());
}

void SidebarTitle::paintEvent(QPaintEvent* /*event*/)
{
    if (m_mask.isNull() || m_mask.devicePixelRatio() != devicePixelRatioF())
        makeMask();
    const QSizeF size = m_mask.deviceIndependentSize();
    const double turn = reducesMotion(this) ? 0 : std::fmod(m_clock.now(), kTurnSeconds) / kTurnSeconds;
    QConicalGradient gradient(QRectF(QPointF(), size).center(), -360 * turn);
    const auto at = [&](double place, const QColor& colour) {
        gradient.setColorAt(place, AppTheme::legible(colour, palette()));
    };
    // Pink is opposite the blend of the other two, so that without motion the ends of the word differ most.
    at(0, AppTheme::accentPink());
    at(1.0 / 3, AppTheme::accentPurple());
    at(2.0 / 3, AppTheme::accentBlue());
    at(1, AppTheme::accentPink());

    QPainter colours(&m_frame);
    colours.setCompositionMode(QPainter::CompositionMode_Source);
    colours.fillRect(QRectF(QPointF(), size), gradient);
    colours.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    colours.drawPixmap(0, 0, m_mask);
    colours.end();
    QPainter(this).drawPixmap(QPointF(0, std::round((height() - size.height()) / 2)), m_frame);
}

} // namespace orvanlite
