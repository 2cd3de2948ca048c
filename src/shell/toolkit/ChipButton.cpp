#include "shell/toolkit/ChipButton.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/RelativeFont.h"

#include <QKeyEvent>
#include <QPainter>

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
    double offOpacity; ///< of the text, multiplied with that of the secondary colour
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

} // namespace

ChipButton::ChipButton(Kind kind, QWidget* parent)
    : Control(parent)
    , m_kind(kind)
    , m_progress(new Glide(1, kStateMilliseconds, this))
{
    setCheckable(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setRelativeFont(this, measuresOf(kind).fontScale);
    setAccessibleDescription(description(m_state));
}

QFont ChipButton::fontFor(Kind kind, QFont surroundings)
{
    return AppTheme::scaled(std::move(surroundings), measuresOf(kind).fontScale);
}

QSize ChipButton::sizeFor(Kind kind, const QString& text, const QFont& chipFont)
{
    const Measures& m = measuresOf(kind);
    const QFontMetricsF metrics(chipFont);
    // One extra pixel: text that fits exactly would still be elided.
    const int textWidth = static_cast<int>(std::ceil(metrics.horizontalAdvance(text))) + 1;
    return {2 * m.paddingX + m.dot + m.gap + textWidth,
            2 * m.paddingY + static_cast<int>(std::ceil(metrics.height()))};
}

void ChipButton::setState(ChipState state, bool isAnimated)
{
    if (state == m_state)
        return;
    m_earlierState = std::exchange(m_state, state);
    setChecked(state != ChipState::off);
    setAccessibleDescription(description(state));
    if (isAnimated)
        m_progress->glideFrom(0, 1);
    else
        m_progress->jumpTo(1);
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

void ChipButton::paint(QPainter& painter) const
{
    const Measures& m = measuresOf(m_kind);
    const Colours from = coloursOf(m_earlierState);
    const Colours to = coloursOf(m_state);
    liquidGlassCard(painter, rect(), m.cornerRadius, palette());
    paintHover(painter, rect(), m.cornerRadius, AppTheme::primary(palette()), 0.06, 0.12);
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppTheme::blended(from.dot, to.dot, m_progress->value()));
    painter.drawEllipse(QRectF(m.paddingX, (height() - m.dot) / 2.0, m.dot, m.dot));

    const int textStart = m.paddingX + m.dot + m.gap;
    const QRect textRect(textStart, 0, width() - textStart - m.paddingX, height());
    drawLine(painter, textRect, font(), AppTheme::blended(from.text, to.text, m_progress->value()), label());
}

Control::FocusRing ChipButton::focusRing() const
{
    return accentRing(rect(), measuresOf(m_kind).cornerRadius);
}

void ChipButton::keyPressEvent(QKeyEvent* event)
{
    // Up and Down navigate the surrounding rows.
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        event->ignore();
    else
        Control::keyPressEvent(event);
}

} // namespace orvanlite
