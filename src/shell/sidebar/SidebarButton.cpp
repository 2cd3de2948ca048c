#include "shell/sidebar/SidebarButton.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ToolTips.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr double kRingInset = 2;
/// Margin into which a row grows; at the maximum sidebar width all of it is needed.
constexpr int kBleedX = 4;
constexpr int kBleedY = 1;

} // namespace

SidebarButton::SidebarButton(const Measures& measures, QWidget* parent)
    : Control(parent)
    , m_measures(measures)
{
    setScaling(measures.hoverScale);
    hideInitialFocusRing();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SidebarButton::setIconKey(const QString& key)
{
    if (key == m_iconKey)
        return;
    m_iconKey = key;
    update();
}

void SidebarButton::setCount(const QString& count)
{
    if (count == m_count)
        return;
    m_count = count;
    setAccessibleDescription(count);
    update();
}

QSize SidebarButton::sizeHint() const
{
    const int width = 2 * (kBleedX + m_measures.paddingX) + m_measures.iconSlot + 2 * m_measures.gap +
                      fontMetrics().horizontalAdvance(label() + m_count);
    return {width, minimumSizeHint().height()};
}

QSize SidebarButton::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {2 * (kBleedX + m_measures.paddingX) + m_measures.iconSlot + 3 * metrics.horizontalAdvance(u'…'),
            std::max(metrics.height(), m_measures.iconSize) + 2 * (m_measures.paddingY + kBleedY)};
}

QRectF SidebarButton::ground() const { return QRectF(rect()).adjusted(kBleedX, kBleedY, -kBleedX, -kBleedY); }

QRectF SidebarButton::textRect() const
{
    const int count = m_count.isEmpty() ? 0 : fontMetrics().horizontalAdvance(m_count) + m_measures.gap;
    return ground().adjusted(m_measures.paddingX + m_measures.iconSlot + m_measures.gap, 0,
                             -m_measures.paddingX - count, 0);
}

QString SidebarButton::shownLabel() const
{
    return fontMetrics().elidedText(label(), Qt::ElideRight, static_cast<int>(textRect().width()));
}

bool SidebarButton::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && shownLabel() != label()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(label()), this);
        return true;
    }
    return Control::event(event);
}

void SidebarButton::paintGround(QPainter& painter, const QRectF& ground) const
{
    paintHover(painter, ground, m_measures.cornerRadius, AppTheme::primary(palette()), 0.06, 0.1);
}

QColor SidebarButton::ink() const { return AppTheme::primary(palette()); }

QColor SidebarButton::iconInk() const { return AppTheme::secondary(palette()); }

void SidebarButton::paint(QPainter& painter) const
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF place = ground();
    applyScale(painter, place.center());
    paintGround(painter, place);
    if (!m_iconKey.isEmpty()) {
        const QRectF slot(place.left() + m_measures.paddingX, place.top(), m_measures.iconSlot,
                          place.height());
        const double size = m_measures.iconSize;
        drawIcon(painter, QRectF(slot.center() - QPointF(size / 2, size / 2), QSizeF(size, size)), m_iconKey,
                 iconInk());
    }
    painter.setPen(ink());
    painter.drawText(textRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shownLabel());
    painter.setPen(AppTheme::secondary(palette()));
    painter.drawText(place.adjusted(0, 0, -m_measures.paddingX, 0),
                     Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, m_count);
}

Control::FocusRing SidebarButton::focusRing() const
{
    return {ground().adjusted(kRingInset, kRingInset, -kRingInset, -kRingInset),
            m_measures.cornerRadius - kRingInset, AppTheme::accent(palette())};
}

} // namespace orvanlite
