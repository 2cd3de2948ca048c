#include "shell/PressButton.h"

#include "shell/AppTheme.h"
#include "shell/Icons.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QVariantAnimation>

namespace orvanlite {

namespace {

constexpr int kIconSize = 14;
constexpr int kIconGap = 4;
constexpr int kPaddingX = 8;
constexpr int kPaddingY = 5;
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

void PressButton::setTextColour(const QColor& colour)
{
    m_textColour = colour;
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

QSize PressButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    int width = text().isEmpty() ? 0 : metrics.horizontalAdvance(text());
    if (!m_iconKey.isEmpty())
        width += kIconSize + (width > 0 ? kIconGap : 0);
    return {width + 2 * kPaddingX, std::max(metrics.height(), kIconSize) + 2 * kPaddingY};
}

bool PressButton::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LanguageChange)
        updateGeometry();
    return QAbstractButton::event(event);
}

void PressButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds = rect();
    const QPalette& colours = palette();

    const double groundStrength = m_ground == Ground::accent ? 0.1 : 0;
    const double hoverStrength = isEnabled() && underMouse() ? 0.08 : 0;
    const QColor ground = m_ground == Ground::accent ? AppTheme::accent(colours) : AppTheme::primary(colours);
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppTheme::withOpacity(ground, groundStrength + hoverStrength));
    painter.drawRoundedRect(bounds, 4, 4);

    painter.save();
    painter.translate(bounds.center());
    painter.scale(m_scale, m_scale);
    painter.translate(-bounds.center());
    QColor colour = m_textColour.isValid() ? m_textColour : AppTheme::primary(colours);
    if (!isEnabled())
        colour = AppTheme::withOpacity(colour, 0.4);
    QRectF label = bounds.adjusted(kPaddingX, 0, -kPaddingX, 0);
    if (!m_iconKey.isEmpty()) {
        const QRectF icon(label.left(), label.center().y() - kIconSize / 2.0, kIconSize, kIconSize);
        drawIcon(painter, icon, m_iconKey, colour);
        label.setLeft(icon.right() + kIconGap);
    }
    painter.setPen(colour);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
    painter.restore();

    if (hasFocus()) {
        painter.setPen(QPen(AppTheme::accent(colours), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(bounds.adjusted(1, 1, -1, -1), 4, 4);
    }
}

} // namespace orvanlite
