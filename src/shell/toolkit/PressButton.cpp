#include "shell/toolkit/PressButton.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"

#include <QPainter>

namespace orvanlite {

namespace {

constexpr int kIconSize = 14;
constexpr int kCompactIconSize = 18; // glyphs inside a circle are half this size
constexpr int kIconGap = 3;
constexpr int kPaddingX = 8;
constexpr int kCompactPaddingX = 3;
constexpr int kPaddingY = 5;
constexpr int kSmallPaddingY = 3;
constexpr double kCornerRadius = 4;

} // namespace

PressButton::PressButton(const QString& text, const QString& iconKey, Ground ground, QWidget* parent)
    : Control(parent)
    , m_iconKey(iconKey)
    , m_ground(ground)
{
    setLabel(text);
    setScaling();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
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

int PressButton::paddingX() const { return m_ground == Ground::compact ? kCompactPaddingX : kPaddingX; }

int PressButton::iconExtent() const { return m_ground == Ground::compact ? kCompactIconSize : kIconSize; }

QSize PressButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int paddingY = m_ground == Ground::accent ? kSmallPaddingY : kPaddingY;
    int width = metrics.horizontalAdvance(label());
    if (!m_iconKey.isEmpty())
        width += iconExtent() + (width > 0 ? kIconGap : 0);
    return {width + 2 * paddingX(), std::max(metrics.height(), iconExtent()) + 2 * paddingY};
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

void PressButton::paint(QPainter& painter) const
{
    paintGround(painter);
    applyScale(painter, QRectF(rect()).center());
    const QColor colour = labelColour();
    QRectF textRect = QRectF(rect()).adjusted(paddingX(), 0, -paddingX(), 0);
    if (!m_iconKey.isEmpty()) {
        const int extent = iconExtent();
        const QRectF icon(textRect.left(), textRect.center().y() - extent / 2.0, extent, extent);
        drawIcon(painter, icon, m_iconKey, colour);
        textRect.setLeft(icon.right() + kIconGap);
    }
    painter.setPen(colour);
    painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter, label());
}

Control::FocusRing PressButton::focusRing() const { return accentRing(rect(), kCornerRadius); }

PressButton* makeIconButton(const QString& iconKey, const QString& meaning, const QString& objectName,
                            QWidget* parent, PressButton::Ground ground)
{
    auto* button = new PressButton({}, iconKey, ground, parent);
    button->setObjectName(objectName);
    button->setToolTip(meaning);
    button->setAccessibleName(meaning);
    button->setTextColour(&AppTheme::secondary);
    return button;
}

} // namespace orvanlite
