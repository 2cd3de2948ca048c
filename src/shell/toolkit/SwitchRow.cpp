#include "shell/toolkit/SwitchRow.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/SwitchPainting.h"

#include <QFocusEvent>
#include <QPainter>
#include <QVariantAnimation>

#include <algorithm>

namespace orvanlite {

namespace {

constexpr int kTextGap = 1;
constexpr double kCornerRadius = 7;
constexpr double kSmallScale = 0.86;
// In line with the texts and grounds of the other rows of the sidebar.
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

SwitchRow::SwitchRow(const QString& text, const QString& smallText, bool reducesMotion, QWidget* parent)
    : QAbstractButton(parent)
    , m_smallText(smallText)
    , m_reducesMotion(reducesMotion)
    , m_slide(new QVariantAnimation(this))
{
    setText(text);
    setAccessibleDescription(smallText);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    // Fixed, it would never get the height of wrapped texts.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    m_slide->setDuration(kSwitchMilliseconds);
    m_slide->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_slide, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_position = value.toDouble();
        update();
    });
}

void SwitchRow::setOn(bool isOn)
{
    if (isOn == isChecked())
        return;
    setChecked(isOn);
    m_slide->stop();
    if (m_reducesMotion || !isVisible()) {
        m_position = isOn ? 1 : 0;
        update();
        return;
    }
    m_slide->setStartValue(m_position);
    m_slide->setEndValue(isOn ? 1.0 : 0.0);
    m_slide->start();
}

QFont SwitchRow::smallFont() const
{
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * kSmallScale);
    return small;
}

QSize SwitchRow::textHeights(int width) const
{
    return {wrappedHeight(font(), width, text()), wrappedHeight(smallFont(), width, m_smallText)};
}

QSize SwitchRow::sizeHint() const
{
    const int width = 1 + std::max(fontMetrics().horizontalAdvance(text()),
                                   QFontMetrics(smallFont()).horizontalAdvance(m_smallText));
    return {kBesideText + width, heightForWidth(kBesideText + width)};
}

QSize SwitchRow::minimumSizeHint() const
{
    const int width =
        std::max(longestWord(fontMetrics(), text()), longestWord(QFontMetrics(smallFont()), m_smallText));
    return {kBesideText + width, heightForWidth(QWIDGETSIZE_MAX)};
}

int SwitchRow::heightForWidth(int width) const
{
    const QSize heights = textHeights(std::max(width - kBesideText, 1));
    return std::max(heights.width() + kTextGap + heights.height(), kSwitchSize.height()) + 2 * kPaddingY;
}

bool SwitchRow::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    return QAbstractButton::event(event);
}

void SwitchRow::focusInEvent(QFocusEvent* event)
{
    // A window that comes to the front changes nothing.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        m_showsFocus = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void SwitchRow::keyPressEvent(QKeyEvent* event)
{
    m_showsFocus = true;
    update();
    QAbstractButton::keyPressEvent(event);
}

void SwitchRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ground = QRectF(rect()).adjusted(kBleed, 0, -kBleed, 0);
    if (underMouse() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(AppTheme::withOpacity(AppTheme::primary(palette()), isDown() ? 0.1 : 0.06));
        painter.drawRoundedRect(ground, kCornerRadius, kCornerRadius);
    }
    const int textWidth = std::max(width() - kBesideText, 1);
    const QSize heights = textHeights(textWidth);
    const int top = (height() - heights.width() - kTextGap - heights.height()) / 2;
    painter.setPen(AppTheme::primary(palette()));
    painter.drawText(QRect(kTextLeft, top, textWidth, heights.width()), kWrapped, text());
    painter.setFont(smallFont());
    painter.setPen(AppTheme::secondary(palette()));
    painter.drawText(QRect(kTextLeft, top + heights.width() + kTextGap, textWidth, heights.height()),
                     kWrapped, m_smallText);
    const QRectF track(QPointF(width() - kRight - kSwitchSize.width(), (height() - kSwitchSize.height()) / 2),
                       kSwitchSize);
    drawSwitch(painter, track, m_position, palette());
    if (hasFocus() && m_showsFocus) {
        painter.setPen(QPen(AppTheme::accent(palette()), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(ground.adjusted(1, 1, -1, -1), kCornerRadius, kCornerRadius);
    }
}

} // namespace orvanlite
