#include "shell/sidebar/SidebarButton.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ButtonKeys.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ToolTips.h"

#include <QFocusEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QVariantAnimation>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr double kRingInset = 2;
constexpr double kPressedScale = 0.96;
constexpr int kPressMilliseconds = 150;
constexpr int kHoverMilliseconds = 200;
constexpr int kPaddingX = 8;
/// Room for a row that grows; the widest sidebar needs all of it.
constexpr int kBleedX = 4;
constexpr int kBleedY = 1;

} // namespace

SidebarButton::SidebarButton(const Measures& measures, bool reducesMotion, QWidget* parent)
    : QAbstractButton(parent)
    , m_measures(measures)
    , m_reducesMotion(reducesMotion)
    , m_animation(new QVariantAnimation(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_scale = value.toDouble();
        update();
    });
    connect(this, &QAbstractButton::pressed, this, [this] { animate(kPressMilliseconds); });
    connect(this, &QAbstractButton::released, this, [this] { animate(kPressMilliseconds); });
}

void SidebarButton::setLabel(const QString& label)
{
    if (label == m_label)
        return;
    m_label = label;
    setText(QString(label).replace(u'&', u"&&"_s));
    updateGeometry();
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
    const int width = 2 * (kBleedX + kPaddingX) + m_measures.iconSlot + 2 * m_measures.gap +
                      fontMetrics().horizontalAdvance(m_label + m_count);
    return {width, minimumSizeHint().height()};
}

QSize SidebarButton::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {2 * (kBleedX + kPaddingX) + m_measures.iconSlot + 3 * metrics.horizontalAdvance(u'…'),
            std::max(metrics.height(), m_measures.iconSize) + 2 * (m_measures.paddingY + kBleedY)};
}

QRectF SidebarButton::ground() const { return QRectF(rect()).adjusted(kBleedX, kBleedY, -kBleedX, -kBleedY); }

QRectF SidebarButton::textRect() const
{
    const int count = m_count.isEmpty() ? 0 : fontMetrics().horizontalAdvance(m_count) + m_measures.gap;
    return ground().adjusted(kPaddingX + m_measures.iconSlot + m_measures.gap, 0, -kPaddingX - count, 0);
}

QString SidebarButton::shownLabel() const
{
    return fontMetrics().elidedText(m_label, Qt::ElideRight, static_cast<int>(textRect().width()));
}

bool SidebarButton::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    if (event->type() == QEvent::ToolTip && shownLabel() != m_label) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(m_label), this);
        return true;
    }
    return QAbstractButton::event(event);
}

void SidebarButton::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    animate(kHoverMilliseconds);
}

void SidebarButton::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    animate(kHoverMilliseconds);
}

void SidebarButton::focusInEvent(QFocusEvent* event)
{
    // A window that comes to the front changes nothing.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        m_showsFocus = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void SidebarButton::keyPressEvent(QKeyEvent* event)
{
    m_showsFocus = true;
    update();
    if (!pressByReturn(*this, *event))
        QAbstractButton::keyPressEvent(event);
}

void SidebarButton::animate(int milliseconds)
{
    const double scale = (isDown() ? kPressedScale : 1) * (underMouse() ? m_measures.hoverScale : 1);
    m_animation->stop();
    if (m_reducesMotion || !isVisible() || m_scale == scale) {
        m_scale = m_reducesMotion ? 1 : scale;
        update();
        return;
    }
    m_animation->setDuration(milliseconds);
    m_animation->setStartValue(m_scale);
    m_animation->setEndValue(scale);
    m_animation->start();
}

void SidebarButton::paintRow(QPainter& painter) const
{
    const QRectF place = ground();
    if (!m_iconKey.isEmpty()) {
        const QRectF slot(place.left() + kPaddingX, place.top(), m_measures.iconSlot, place.height());
        const double size = m_measures.iconSize;
        drawIcon(painter, QRectF(slot.center() - QPointF(size / 2, size / 2), QSizeF(size, size)), m_iconKey,
                 iconInk());
    }
    painter.setPen(ink());
    painter.drawText(textRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shownLabel());
    painter.setPen(AppTheme::secondary(palette()));
    painter.drawText(place.adjusted(0, 0, -kPaddingX, 0),
                     Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, m_count);
}

QColor SidebarButton::ringInk() const { return AppTheme::accent(palette()); }

void SidebarButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF place = ground();
    painter.save();
    painter.translate(place.center());
    painter.scale(m_scale, m_scale);
    painter.translate(-place.center());
    paintGround(painter, place);
    paintRow(painter);
    painter.restore();
    if (hasFocus() && m_showsFocus) {
        painter.setPen(QPen(ringInk(), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(place.adjusted(kRingInset, kRingInset, -kRingInset, -kRingInset),
                                m_measures.cornerRadius - kRingInset, m_measures.cornerRadius - kRingInset);
    }
}

} // namespace orvanlite
