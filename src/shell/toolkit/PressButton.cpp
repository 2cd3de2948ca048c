#include "shell/toolkit/PressButton.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ButtonKeys.h"
#include "shell/toolkit/Icons.h"

#include <QFocusEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QVariantAnimation>

namespace orvanlite {

namespace {

constexpr int kIconSize = 14;
constexpr int kCompactIconSize = 18; // what stands inside a circle is half of it
constexpr int kIconGap = 3;
constexpr int kPaddingX = 8;
constexpr int kCompactPaddingX = 3;
constexpr int kPaddingY = 5;
constexpr int kSmallPaddingY = 3;
constexpr double kCornerRadius = 4;
constexpr double kPressedScale = 0.96;
constexpr int kPressMilliseconds = 150;

} // namespace

PressButton::PressButton(const QString& text, const QString& iconKey, Ground ground, QWidget* parent)
    : QAbstractButton(parent)
    , m_iconKey(iconKey)
    , m_ground(ground)
    , m_animation(new QVariantAnimation(this))
{
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_animation->setDuration(kPressMilliseconds);
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_scale = value.toDouble();
        update();
    });
    connect(this, &QAbstractButton::pressed, this, [this] { animateTo(kPressedScale); });
    connect(this, &QAbstractButton::released, this, [this] { animateTo(1); });
}

void PressButton::setTextColour(QColor (*colour)(const QPalette&))
{
    m_textColour = colour;
    update();
}

void PressButton::setTint(QColor (*tint)(const QPalette&))
{
    m_tint = tint;
    update();
}

void PressButton::animateTo(double scale)
{
    m_animation->stop();
    if (m_reducesMotion || !isVisible()) {
        m_scale = scale;
        update();
        return;
    }
    m_animation->setStartValue(m_scale);
    m_animation->setEndValue(scale);
    m_animation->start();
}

int PressButton::paddingX() const { return m_ground == Ground::compact ? kCompactPaddingX : kPaddingX; }

int PressButton::iconExtent() const { return m_ground == Ground::compact ? kCompactIconSize : kIconSize; }

QSize PressButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int paddingY = m_ground == Ground::accent ? kSmallPaddingY : kPaddingY;
    int width = text().isEmpty() ? 0 : metrics.horizontalAdvance(text());
    if (!m_iconKey.isEmpty())
        width += iconExtent() + (width > 0 ? kIconGap : 0);
    return {width + 2 * paddingX(), std::max(metrics.height(), iconExtent()) + 2 * paddingY};
}

bool PressButton::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LanguageChange)
        updateGeometry();
    return QAbstractButton::event(event);
}

void PressButton::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void PressButton::keyPressEvent(QKeyEvent* event)
{
    if (!pressByReturn(*this, *event))
        QAbstractButton::keyPressEvent(event);
}

QColor PressButton::labelColour() const
{
    QColor colour = AppTheme::primary(palette());
    if (m_textColour)
        colour = m_textColour(palette());
    else if (m_tint)
        colour = AppTheme::legible(m_tint(palette()), palette());
    return isEnabled() ? colour : AppTheme::withOpacity(colour, 0.4);
}

void PressButton::paintGround(QPainter& painter) const
{
    const QColor neutral = AppTheme::primary(palette());
    QColor ground = m_ground == Ground::accent ? AppTheme::accent(palette()) : neutral;
    double strength = m_ground == Ground::accent ? 0.1 : 0;
    QRectF bounds = rect();
    painter.setPen(Qt::NoPen);
    if (m_ground == Ground::bordered) {
        ground = m_tint ? m_tint(palette()) : neutral;
        strength = m_tint ? 0.12 : 0.05;
        const double border = (m_tint ? 0.45 : 0.22) * (isEnabled() ? 1 : 0.5);
        painter.setPen(QPen(AppTheme::withOpacity(ground, border), 1));
        bounds.adjust(0.5, 0.5, -0.5, -0.5);
    }
    if (isEnabled() && underMouse())
        strength += 0.08;
    painter.setBrush(AppTheme::withOpacity(ground, strength));
    painter.drawRoundedRect(bounds, kCornerRadius, kCornerRadius);
}

void PressButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds = rect();
    const QPalette& colours = palette();

    paintGround(painter);
    painter.save();
    painter.translate(bounds.center());
    painter.scale(m_scale, m_scale);
    painter.translate(-bounds.center());
    const QColor colour = labelColour();
    QRectF label = bounds.adjusted(paddingX(), 0, -paddingX(), 0);
    if (!m_iconKey.isEmpty()) {
        const int extent = iconExtent();
        const QRectF icon(label.left(), label.center().y() - extent / 2.0, extent, extent);
        drawIcon(painter, icon, m_iconKey, colour);
        label.setLeft(icon.right() + kIconGap);
    }
    painter.setPen(colour);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
    painter.restore();

    if (hasFocus() && m_showsFocus) {
        painter.setPen(QPen(AppTheme::accent(colours), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(bounds.adjusted(1, 1, -1, -1), kCornerRadius, kCornerRadius);
    }
}

} // namespace orvanlite
