#include "shell/toolkit/ChipButton.h"

#include "shell/toolkit/AppTheme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVariantAnimation>

#include <cmath>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kStateMilliseconds = 250;

struct Measures {
    int dot;
    int paddingX;
    int paddingY;
    int gap;
    double cornerRadius;
    double fontScale;
    double offOpacity; ///< of the text, on top of the secondary colour
};

constexpr Measures kFormat{7, 8, 4, 5, 5, 0.92, 0.6};
constexpr Measures kVariant{6, 6, 2, 3, 4, 0.86, 0.5};

const Measures& measuresOf(ChipButton::Kind kind)
{
    return kind == ChipButton::Kind::format ? kFormat : kVariant;
}

QString description(ChipState state)
{
    switch (state) {
    case ChipState::active:
        return u"active"_s;
    case ChipState::partlyActive:
        return u"partly active"_s;
    case ChipState::off:
        break;
    }
    return u"off"_s;
}

QColor between(const QColor& from, const QColor& to, double share)
{
    const auto part = [share](float f, float t) { return static_cast<float>(f + share * (t - f)); };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()), part(from.alphaF(), to.alphaF()));
}

} // namespace

ChipButton::ChipButton(Kind kind, QWidget* parent)
    : QAbstractButton(parent)
    , m_kind(kind)
{
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFont(fontFor(kind, parent->font()));
    setAccessibleDescription(description(m_state));
}

QFont ChipButton::fontFor(Kind kind, QFont surroundings)
{
    surroundings.setPointSizeF(surroundings.pointSizeF() * measuresOf(kind).fontScale);
    return surroundings;
}

QSize ChipButton::sizeFor(Kind kind, const QString& text, const QFont& chipFont)
{
    const Measures& m = measuresOf(kind);
    const QFontMetricsF metrics(chipFont);
    // One pixel more than the text is wide: text that just fits would be cut all the same.
    const int textWidth = static_cast<int>(std::ceil(metrics.horizontalAdvance(text))) + 1;
    return {2 * m.paddingX + m.dot + m.gap + textWidth,
            2 * m.paddingY + static_cast<int>(std::ceil(metrics.height()))};
}

void ChipButton::setLabel(const QString& label)
{
    if (label == m_label)
        return;
    m_label = label;
    setText(QString(label).replace(u'&', u"&&"_s));
    updateGeometry();
}

void ChipButton::setState(ChipState state, bool isAnimated)
{
    if (state == m_state)
        return;
    m_earlierState = std::exchange(m_state, state);
    setChecked(state != ChipState::off);
    setAccessibleDescription(description(state));
    if (!isAnimated || !isVisible()) {
        if (m_animation)
            m_animation->stop();
        m_progress = 1;
        update();
        return;
    }
    if (!m_animation) {
        m_animation = new QVariantAnimation(this);
        m_animation->setDuration(kStateMilliseconds);
        m_animation->setEasingCurve(QEasingCurve::InOutQuad);
        m_animation->setStartValue(0.0);
        m_animation->setEndValue(1.0);
        connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
            m_progress = value.toDouble();
            update();
        });
    }
    m_animation->stop();
    m_animation->start();
}

ChipButton::Colours ChipButton::coloursOf(ChipState state) const
{
    const QColor primary = AppTheme::primary(palette());
    switch (state) {
    case ChipState::active:
        return {AppTheme::green(palette()), primary};
    case ChipState::partlyActive:
        return {AppTheme::orange(palette()), primary};
    case ChipState::off:
        break;
    }
    return {AppTheme::withOpacity(AppTheme::gray(palette()), 0.35),
            AppTheme::withOpacity(AppTheme::secondary(palette()), measuresOf(m_kind).offOpacity)};
}

void ChipButton::paintEvent(QPaintEvent* /*event*/)
{
    const Measures& m = measuresOf(m_kind);
    const Colours from = coloursOf(m_earlierState);
    const Colours to = coloursOf(m_state);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    liquidGlassCard(painter, rect(), m.cornerRadius, palette());
    if (underMouse() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(AppTheme::withOpacity(AppTheme::primary(palette()), isDown() ? 0.12 : 0.06));
        painter.drawRoundedRect(rect(), m.cornerRadius, m.cornerRadius);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(between(from.dot, to.dot, m_progress));
    painter.drawEllipse(QRectF(m.paddingX, (height() - m.dot) / 2.0, m.dot, m.dot));

    const int textStart = m.paddingX + m.dot + m.gap;
    const QRect place(textStart, 0, width() - textStart - m.paddingX, height());
    painter.setPen(between(from.text, to.text, m_progress));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_label, Qt::ElideRight, place.width()));
    if (hasFocus()) {
        painter.setPen(QPen(AppTheme::accent(palette()), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), m.cornerRadius, m.cornerRadius);
    }
}

void ChipButton::keyPressEvent(QKeyEvent* event)
{
    // Up and Down belong to the rows around the chips.
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        event->ignore();
    else
        QAbstractButton::keyPressEvent(event);
}

} // namespace orvanlite
