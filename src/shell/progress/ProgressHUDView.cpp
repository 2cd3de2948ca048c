#include "shell/progress/ProgressHUDView.h"

#include "platform/Compositing.h"
#include "shell/progress/ProgressDecoration.h"
#include "shell/progress/ProgressHUDModel.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/TabularLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGraphicsEffect>
#include <QGuiApplication>
#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kFrameMilliseconds = 16;
constexpr int kMaxTextWidth = 320;
constexpr int kSpacing = 16;
constexpr int kPaddingX = 32;
constexpr int kPaddingY = 22;
/// Of the background, on a composited desktop.
constexpr double kOpacity = 0.82;
constexpr double kSmallestScale = 0.88;
constexpr double kAppearResponse = 0.38;
constexpr double kAppearDamping = 0.72;
constexpr double kAppearSeconds = 0.5; // the spring has settled by then
/// Time of the still frame for reduced motion: the wave at full height.
constexpr double kStillSeconds = 3.25;

/// Sizes in pixels, because the panel's size is fixed.
QFont textFont(QFont font, int pixels, QFont::Weight weight = QFont::Normal)
{
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

} // namespace

/// Draws the view smaller and fainter while it appears.
class AppearEffect final : public QGraphicsEffect {
public:
    using QGraphicsEffect::QGraphicsEffect;

    void setTime(double seconds)
    {
        // There is no space for the spring to overshoot the full size.
        m_share = std::clamp(springAt(seconds, kAppearResponse, kAppearDamping), 0.0, 1.0);
        update();
    }

protected:
    void draw(QPainter* painter) override
    {
        QPoint offset;
        const QPixmap picture = sourcePixmap(Qt::LogicalCoordinates, &offset, NoPad);
        const QPointF middle = sourceBoundingRect().center();
        const double scale = kSmallestScale + (1 - kSmallestScale) * m_share;
        painter->save();
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->setOpacity(m_share);
        painter->translate(middle);
        painter->scale(scale, scale);
        painter->translate(-middle);
        painter->drawPixmap(offset, picture);
        painter->restore();
    }

private:
    double m_share = 0;
};

ProgressHUDView::ProgressHUDView(const ProgressHUDModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_wave(new WaveBand(this))
    , m_label(new QLabel(this))
    , m_count(new TabularLabel(this))
    , m_bar(new ShimmerBar(this))
    , m_percent(new TabularLabel(this))
    , m_dots(new ProgressDots(this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
    , m_isTranslucent(QGuiApplication::platformName() != u"xcb"_s || platform::blendsWindowsOnX11())
{
    setObjectName(u"progressView"_s);
    setAccessibleName(u"Progress"_s);
    setFixedSize(kSize);
    build();
    render();
    m_updates->watch(model.label, model.count, model.progress);
}

void ProgressHUDView::build()
{
    m_label->setObjectName(u"progressLabel"_s);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setFont(textFont(font(), 13, QFont::DemiBold));
    m_label->setMaximumWidth(kMaxTextWidth);
    m_count->setObjectName(u"progressCount"_s);
    m_count->setAlignment(Qt::AlignCenter);
    m_bar->setObjectName(u"progressBar"_s);
    m_percent->setObjectName(u"progressPercent"_s);
    m_percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (TabularLabel* numbers : {m_count, m_percent}) {
        numbers->setFont(textFont(font(), 11));
        numbers->setForegroundRole(QPalette::PlaceholderText); // the palette's secondary text
    }
    m_percent->setFixedWidth(m_percent->widthOf(u"100%"_s)); // keeps the dots in place

    auto* share = new QHBoxLayout;
    share->setSpacing(AppTheme::kSpace2);
    share->addStretch();
    share->addWidget(m_percent);
    share->addWidget(m_dots);
    share->addStretch();

    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(kPaddingX, kPaddingY, kPaddingX, kPaddingY);
    stack->setSpacing(kSpacing); // none for the hidden count of a single plugin
    stack->addStretch();
    for (QWidget* part : {static_cast<QWidget*>(m_wave), static_cast<QWidget*>(m_label),
                          static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_bar)})
        stack->addWidget(part, 0, Qt::AlignHCenter);
    stack->addLayout(share);
    stack->addStretch();
}

void ProgressHUDView::render()
{
    const QString& text = *m_model.label;
    m_label->setText(m_label->fontMetrics().elidedText(text, Qt::ElideRight, kMaxTextWidth));
    m_label->setAccessibleName(text);
    const int count = *m_model.count;
    const double progress = *m_model.progress;
    m_count->setVisible(count >= 2);
    m_count->setText(u"%1 of %2 plugins"_s.arg(static_cast<int>(progress * count)).arg(count));
    m_bar->setProgress(progress);
    m_percent->setText(u"%1%"_s.arg(static_cast<int>(progress * 100)));
}

void ProgressHUDView::showEvent(QShowEvent* /*event*/)
{
    m_shown.start();
    if (!reducesMotion(this)) {
        m_appearing = new AppearEffect(this);
        setGraphicsEffect(m_appearing); // takes ownership
    }
    followMotion();
}

void ProgressHUDView::hideEvent(QHideEvent* /*event*/) { followMotion(); }

void ProgressHUDView::followMotion()
{
    const bool moves = isVisible() && !reducesMotion(this);
    if (moves) {
        m_timer.start(kFrameMilliseconds, Qt::PreciseTimer, this);
        return;
    }
    m_timer.stop();
    m_appearing = nullptr;
    setGraphicsEffect(nullptr);
    setTime(kStillSeconds);
}

void ProgressHUDView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        setTime(double(m_shown.elapsed()) / 1000);
}

void ProgressHUDView::setTime(double seconds)
{
    m_wave->setTime(seconds);
    m_bar->setTime(seconds);
    m_dots->setTime(seconds);
    if (!m_appearing)
        return;
    m_appearing->setTime(seconds);
    if (seconds >= kAppearSeconds) {
        m_appearing = nullptr;
        setGraphicsEffect(nullptr);
    }
}

void ProgressHUDView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        m_background = QPixmap();
    else if (event->type() == QEvent::StyleChange)
        followMotion();
    QWidget::changeEvent(event);
}

QPixmap ProgressHUDView::makeBackground() const
{
    QPixmap made(size() * devicePixelRatioF());
    made.setDevicePixelRatio(devicePixelRatioF());
    made.fill(Qt::transparent);
    QPainter painter(&made);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        AppTheme::withOpacity(palette().color(QPalette::Window), m_isTranslucent ? kOpacity : 1));
    painter.drawRoundedRect(rect(), kCornerRadius, kCornerRadius);
    painter.setPen(QPen(AppTheme::withOpacity(AppTheme::primary(palette()), 0.12), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCornerRadius - 0.5,
                            kCornerRadius - 0.5);
    return made;
}

void ProgressHUDView::paintEvent(QPaintEvent* /*event*/)
{
    if (m_background.devicePixelRatio() != devicePixelRatioF() || m_background.isNull())
        m_background = makeBackground();
    QPainter(this).drawPixmap(0, 0, m_background);
}

} // namespace orvanlite
