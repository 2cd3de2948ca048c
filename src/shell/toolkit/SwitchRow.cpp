#include "shell/toolkit/SwitchRow.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/SwitchPainting.h"

#include <QPainter>

#include <algorithm>

namespace orvanlite {

namespace {

constexpr int kTextGap = 1;
constexpr double kCornerRadius = 7;
constexpr double kSmallScale = 0.86;
// Aligned with the texts and backgrounds of the other sidebar rows.
constexpr int kBleed = 4;
constexpr int kTextLeft = 32;
constexpr int kRight = 12;
constexpr int kPaddingY = 6;
constexpr int kBesideText = kTextLeft + AppTheme::kSpace2 + kSwitchSize.width() + kRight;
constexpr int kWrapped = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

int wrappedHeight(const QFont& font, int width, const QString& text)
{
    return QFontMetrics(font).boundingRect(0, 0, width, QWIDGETSIZE_MAX, kWrapped, text).height();
}

int longestWord(const QFontMetrics& metrics, const QString& text)
{
    int longest = 0;
    const QStringList words = text.split(u' ');
    for (const QString& word : words)
        longest = std::max(longest, metrics.horizontalAdvance(word));
    return longest + 1; // the advance is rounded
}

} // namespace

SwitchRow::SwitchRow(const QString& text, const QString& smallText, QWidget* parent)
    : Control(parent)
    , m_smallText(smallText)
    , m_position(new Glide(0, kSwitchMilliseconds, this))
{
    setLabel(text);
    setAccessibleDescription(smallText);
    setCheckable(true);
    // A fixed vertical policy would ignore the height of wrapped texts.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SwitchRow::setOn(bool isOn)
{
    if (isOn == isChecked())
        return;
    setChecked(isOn);
    m_position->glideTo(isOn ? 1 : 0);
}

QFont SwitchRow::smallFont() const { return AppTheme::scaled(font(), kSmallScale); }

QSize SwitchRow::textHeights(int width) const
{
    return {wrappedHeight(font(), width, label()), wrappedHeight(smallFont(), width, m_smallText)};
}

QSize SwitchRow::sizeHint() const
{
    const int width = 1 + std::max(fontMetrics().horizontalAdvance(label()),
                                   QFontMetrics(smallFont()).horizontalAdvance(m_smallText));
    return {kBesideText + width, heightForWidth(kBesideText + width)};
}

QSize SwitchRow::minimumSizeHint() const
{
    const int width =
        std::max(longestWord(fontMetrics(), label()), longestWord(QFontMetrics(smallFont()), m_smallText));
    return {kBesideText + width, heightForWidth(QWIDGETSIZE_MAX)};
}

int SwitchRow::heightForWidth(int width) const
{
    const QSize heights = textHeights(std::max(width - kBesideText, 1));
    return std::max(heights.width() + kTextGap + heights.height(), kSwitchSize.height()) + 2 * kPaddingY;
}

void SwitchRow::paint(QPainter& painter) const
{
    paintHover(painter, QRectF(rect()).adjusted(kBleed, 0, -kBleed, 0), kCornerRadius,
               AppTheme::primary(palette()), 0.06, 0.1);
    const int textWidth = std::max(width() - kBesideText, 1);
    const QSize heights = textHeights(textWidth);
    const int top = (height() - heights.width() - kTextGap - heights.height()) / 2;
    painter.setPen(AppTheme::primary(palette()));
    painter.drawText(QRect(kTextLeft, top, textWidth, heights.width()), kWrapped, label());
    painter.setFont(smallFont());
    painter.setPen(AppTheme::secondary(palette()));
    painter.drawText(QRect(kTextLeft, top + heights.width() + kTextGap, textWidth, heights.height()),
                     kWrapped, m_smallText);
    const QRectF track(QPointF(width() - kRight - kSwitchSize.width(), (height() - kSwitchSize.height()) / 2),
                       kSwitchSize);
    drawSwitch(painter, track, m_position->value(), palette());
}

Control::FocusRing SwitchRow::focusRing() const
{
    return accentRing(QRectF(rect()).adjusted(kBleed, 0, -kBleed, 0), kCornerRadius);
}

} // namespace orvanlite
