#include "shell/toolkit/Banner.h"

#include "shell/toolkit/Announce.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Control.h"
#include "shell/toolkit/ElidedLabel.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QPainter>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpacing = 10;
constexpr int kPaddingX = 16;
constexpr int kPaddingY = 10;
constexpr int kIconSize = 22;
constexpr int kPillPaddingX = 12;
constexpr int kPillPaddingY = 5;
constexpr int kRing = 3; ///< margin for the focus ring
constexpr int kCrossSize = 12;
constexpr int kCrossPadding = 6;
constexpr int kRoomyTitle = 24; ///< average characters; below this the button wraps
constexpr int kSlideMilliseconds = 300;
constexpr double kSmall = 0.88;
constexpr double kNotesOpacity = 0.8;
constexpr double kCrossOpacity = 0.7;

class PillButton final : public Control {
public:
    PillButton(const QString& text, QWidget* parent)
        : Control(parent)
    {
        setLabel(text);
        setRelativeFont(this, kSmall, QFont::DemiBold);
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        const int text = fontMetrics().horizontalAdvance(label()) + 1;
        return {text + 2 * (kPillPaddingX + kRing), fontMetrics().height() + 2 * (kPillPaddingY + kRing)};
    }

protected:
    void paint(QPainter& painter) const override
    {
        const QRectF pill = QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing);
        painter.setPen(Qt::NoPen);
        if (underMouse() && !isDown()) {
            painter.setBrush(AppTheme::withOpacity(Qt::white, 0.35));
            painter.drawRoundedRect(pill.adjusted(-2, -2, 2, 2), pill.height() / 2 + 2,
                                    pill.height() / 2 + 2);
        }
        painter.setBrush(QColor(Qt::white));
        painter.drawRoundedRect(pill, pill.height() / 2, pill.height() / 2);
        painter.setPen(isDown() ? AppTheme::actionText().darker(140) : AppTheme::actionText());
        painter.drawText(rect(), Qt::AlignCenter, label());
    }
    [[nodiscard]] FocusRing focusRing() const override
    {
        const QRectF ring = QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75);
        return {ring, ring.height() / 2, Qt::white, 1.5};
    }
};

class CrossButton final : public Control {
public:
    CrossButton(const QString& tip, QWidget* parent)
        : Control(parent)
    {
        setToolTip(tip);
        setAccessibleName(u"Dismiss"_s);
        setAccessibleDescription(tip);
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        const int side = std::max(kCrossSize, fontMetrics().ascent()) + 2 * kCrossPadding;
        return {side, side};
    }

protected:
    void paint(QPainter& painter) const override
    {
        const QRectF bounds = rect();
        paintHover(painter, bounds, bounds.height() / 2, Qt::white, 0.16, 0.3);
        drawIcon(painter, bounds.adjusted(kCrossPadding, kCrossPadding, -kCrossPadding, -kCrossPadding),
                 u"xmark"_s, AppTheme::withOpacity(Qt::white, underMouse() ? 1 : kCrossOpacity));
    }
    [[nodiscard]] FocusRing focusRing() const override
    {
        const QRectF ring = QRectF(rect()).adjusted(1, 1, -1, -1);
        return {ring, ring.height() / 2, Qt::white, 1.5};
    }
};

} // namespace

Banner::Banner(const Look& look, QWidget* parent)
    : QWidget(parent)
    , m_tint(look.tint)
    , m_progress(new Glide(0, kSlideMilliseconds, this, [this] { showProgress(); }))
{
    setObjectName(look.objectName);
    const auto white = [](const QPalette&) { return QColor(Qt::white); };
    auto* icon = new TintedLabel({}, white, this);
    icon->setIcon(look.iconKey, kIconSize);
    m_icon = icon;
    m_title = new TintedLabel({}, white, this);
    m_title->setObjectName(look.objectName + u"Title"_s);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setWordWrap(true);
    setRelativeFont(m_title, 1, QFont::DemiBold);
    m_notes = new ElidedLabel({}, this);
    m_notes->setObjectName(look.objectName + u"Notes"_s);
    setRelativeFont(m_notes, kSmall);
    QPalette faint;
    faint.setColor(QPalette::WindowText, AppTheme::withOpacity(Qt::white, kNotesOpacity));
    m_notes->setPalette(faint);
    m_notes->hide();
    m_action = new PillButton(look.action, this);
    m_action->setObjectName(look.objectName + u"Button"_s);
    m_dismiss = new CrossButton(look.dismissTip, this);
    m_dismiss->setObjectName(look.objectName + u"Dismiss"_s);
    for (const auto& [button, clicked] :
         {std::pair(m_action, &Banner::actionClicked), std::pair(m_dismiss, &Banner::dismissClicked)}) {
        connect(button, &QAbstractButton::clicked, this, [this, signal = clicked] {
            if (m_isShown)
                Q_EMIT(this->*signal)();
        });
    }
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(m_progress, &QAbstractAnimation::finished, this, [this] { setVisible(m_isShown); });
    hide();
}

void Banner::setTexts(const QString& title, const QString& notes)
{
    const QString line = notes.simplified(); // a single line
    m_title->setText(title);
    m_notes->setText(line);
    m_notes->setVisible(!line.isEmpty());
    setAccessibleName(line.isEmpty() ? title : title + u". "_s + line);
    updateGeometry();
    place();
    update();
}

void Banner::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    if (window()->isVisible())
        setVisible(true);
    m_progress->glideTo(isShown ? 1 : 0);
    if (m_progress->state() == QAbstractAnimation::Stopped)
        setVisible(isShown);
    if (isShown)
        announce(this, accessibleName());
}

void Banner::showProgress()
{
    const double progress = m_progress->value();
    const bool isMoving = progress > 0 && progress < 1;
    if (isMoving && !graphicsEffect())
        setGraphicsEffect(new QGraphicsOpacityEffect(this));
    if (isMoving)
        static_cast<QGraphicsOpacityEffect*>(graphicsEffect())->setOpacity(progress);
    else
        setGraphicsEffect(nullptr);
    updateGeometry();
    place();
}

Banner::Places Banner::arrange(int width) const
{
    const QSize action = m_action->sizeHint();
    const QSize dismiss = m_dismiss->sizeHint();
    const int textLeft = kPaddingX + kIconSize + kSpacing;
    const int beforeDismiss = width - kPaddingX - dismiss.width() - kSpacing;
    const int beforeAction = beforeDismiss - action.width() - kSpacing;
    const bool isNarrow = beforeAction - textLeft < kRoomyTitle * fontMetrics().averageCharWidth();
    const int textWidth = std::max(1, (isNarrow ? beforeDismiss : beforeAction) - textLeft);
    const int titleHeight = m_title->heightForWidth(textWidth);
    const int notesHeight = m_notes->isHidden() ? 0 : m_notes->sizeHint().height();
    const int rowHeight = std::max(
        {kIconSize, titleHeight + notesHeight, dismiss.height(), isNarrow ? 0 : action.height() - 2 * kRing});
    // If the action button wraps, the icons align with the first line.
    const int iconsHeight = isNarrow ? std::max(dismiss.height(), kIconSize) : rowHeight;
    const auto centred = [](int left, QSize size, int height) {
        return QRect(QPoint(left, kPaddingY + (height - size.height()) / 2), size);
    };
    Places places;
    places.icon = centred(kPaddingX, {kIconSize, kIconSize}, iconsHeight);
    places.title = centred(textLeft, {textWidth, titleHeight + notesHeight}, rowHeight);
    places.title.setHeight(titleHeight);
    places.notes = QRect(textLeft, places.title.bottom() + 1, textWidth, notesHeight);
    places.dismiss = centred(beforeDismiss + kSpacing, dismiss, iconsHeight);
    places.action = isNarrow
                        ? QRect(QPoint(textLeft - kRing, kPaddingY + rowHeight + kSpacing - kRing), action)
                        : centred(beforeAction + kSpacing, action, rowHeight);
    if (isNarrow && places.action.right() > width - kPaddingX)
        places.action.moveLeft(kPaddingX - kRing);
    places.height = kPaddingY + rowHeight + kPaddingY;
    if (isNarrow)
        places.height += kSpacing + action.height() - 2 * kRing;
    return places;
}

void Banner::place()
{
    const Places places = arrange(width());
    // Slides out over the top edge.
    const int above = height() - places.height;
    m_icon->setGeometry(places.icon.translated(0, above));
    m_title->setGeometry(places.title.translated(0, above));
    m_notes->setGeometry(places.notes.translated(0, above));
    m_action->setGeometry(places.action.translated(0, above));
    m_dismiss->setGeometry(places.dismiss.translated(0, above));
}

int Banner::heightForWidth(int width) const
{
    return static_cast<int>(arrange(width).height * m_progress->value() + 0.5);
}

QSize Banner::sizeHint() const
{
    const int wide = 2 * kPaddingX + kIconSize + 3 * kSpacing + m_title->sizeHint().width() +
                     m_action->sizeHint().width() + m_dismiss->sizeHint().width();
    return {wide, heightForWidth(wide)};
}

QSize Banner::minimumSizeHint() const
{
    const int texts =
        kIconSize + 2 * kSpacing + 6 * fontMetrics().averageCharWidth() + m_dismiss->sizeHint().width();
    return {2 * kPaddingX + std::max(texts, m_action->sizeHint().width()), 0};
}

bool Banner::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange) {
        updateGeometry();
        place();
    }
    return QWidget::event(event);
}

void Banner::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

void Banner::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QColor tint = m_tint(palette());
    painter.fillRect(rect(), AppTheme::isHighContrast(palette()) ? AppTheme::groundForWhite(tint) : tint);
}

} // namespace orvanlite
