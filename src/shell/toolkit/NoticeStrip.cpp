#include "shell/toolkit/NoticeStrip.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"

#include <QHBoxLayout>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpacing = 8;
constexpr int kPaddingX = 12;
constexpr int kPaddingY = 8;
constexpr int kIconSize = 15;
constexpr double kCornerRadius = 6;

void fill(QWidget* strip, const NoticeContent& content)
{
    strip->setObjectName(content.objectName);
    auto* icon = new TintedLabel({}, content.tint, strip);
    icon->setIcon(content.iconKey, kIconSize);
    auto* text = new QLabel(content.text, strip);
    text->setObjectName(content.objectName + u"Text"_s);
    text->setWordWrap(true);
    // The height depends on the width alone. By default the label would reserve the height of its narrowest
    // width.
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    policy.setHeightForWidth(true);
    text->setSizePolicy(policy);
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(kPaddingX, kPaddingY, kPaddingX, kPaddingY);
    row->setSpacing(kSpacing);
    row->addWidget(icon);
    row->addWidget(text, 1);
    if (!content.action.isEmpty()) {
        const auto tint = content.tint;
        auto* action = new TintedLabel(
            content.action,
            [tint](const QPalette& colours) { return AppTheme::legible(tint(colours), colours); }, strip);
        setRelativeFont(action, 1, QFont::DemiBold);
        row->addWidget(action);
    }
    policy.setVerticalPolicy(QSizePolicy::Preferred);
    strip->setSizePolicy(policy);
}

} // namespace

NoticeStrip::NoticeStrip(const NoticeContent& content, QWidget* parent)
    : QWidget(parent)
    , m_tint(content.tint)
{
    fill(this, content);
}

void NoticeStrip::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    liquidGlassTinted(painter, rect(), m_tint(palette()), kCornerRadius, palette());
}

NoticeButton::NoticeButton(const NoticeContent& content, QWidget* parent)
    : Control(parent)
    , m_tint(content.tint)
{
    fill(this, content);
    for (QLabel* label : findChildren<QLabel*>())
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(content.action);
    setAccessibleDescription(content.text);
    setCursor(Qt::PointingHandCursor);
}

QSize NoticeButton::sizeHint() const { return layout()->sizeHint(); }

QSize NoticeButton::minimumSizeHint() const { return layout()->minimumSize(); }

void NoticeButton::paint(QPainter& painter) const
{
    liquidGlassTinted(painter, rect(), m_tint(palette()), kCornerRadius, palette());
    paintHover(painter, rect(), kCornerRadius, m_tint(palette()), 0.08, 0.16);
}

Control::FocusRing NoticeButton::focusRing() const { return accentRing(rect(), kCornerRadius); }

} // namespace orvanlite
