#include "shell/sidebar/SidebarScrollArea.h"

#include "shell/toolkit/Divider.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/ThinScrollBar.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QVariantAnimation>

#include <cmath>

namespace orvanlite {

namespace {

constexpr int kScrollMilliseconds = 250;
constexpr int kFocusMargin = 4;

QWidget* makeEdge(QWidget* parent)
{
    QWidget* edge = makeDivider(parent);
    edge->setAttribute(Qt::WA_TransparentForMouseEvents);
    edge->hide();
    return edge;
}

} // namespace

SidebarScrollArea::SidebarScrollArea(QWidget* content, int leastHeight, bool isAsHighAsContent,
                                     QWidget* parent)
    : QScrollArea(parent)
    , m_topEdge(makeEdge(this))
    , m_bottomEdge(makeEdge(this))
    , m_leastHeight(leastHeight)
    , m_isAsHighAsContent(isAsHighAsContent)
    , m_animation(new QVariantAnimation(this))
{
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBar(new ThinScrollBar(Qt::Vertical, this));
    setSizePolicy(QSizePolicy::Preferred, isAsHighAsContent ? QSizePolicy::Maximum : QSizePolicy::Expanding);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    for (QWidget* edge : {m_topEdge, m_bottomEdge})
        edge->raise();
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &SidebarScrollArea::showEdges);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &SidebarScrollArea::showEdges);
    m_animation->setDuration(kScrollMilliseconds);
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    m_animation->setStartValue(0.0);
    m_animation->setEndValue(1.0);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& share) {
        // Sections may open and close meanwhile, so the target is recomputed at every step.
        verticalScrollBar()->setValue(m_start + qRound((scrollEnd() - m_start) * share.toDouble()));
    });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
        // Only for focus by keyboard: a click must not move the widget under the pointer.
        if (now && widget()->isAncestorOf(now) && QApplication::mouseButtons() == Qt::NoButton)
            ensureWidgetVisible(now, 0, kFocusMargin);
    });
}

int SidebarScrollArea::scrollEnd() const
{
    const int top = m_target->mapTo(widget(), QPoint()).y();
    const int lowest = top + m_target->height() - viewport()->height();
    const int end = m_isToTop ? top : std::min(top, std::max(m_start, lowest));
    return std::min(end, verticalScrollBar()->maximum());
}

void SidebarScrollArea::scrollToTop(QWidget* widget) { scrollTo(widget, true); }

void SidebarScrollArea::scrollIntoView(QWidget* widget) { scrollTo(widget, false); }

void SidebarScrollArea::scrollTo(QWidget* widget, bool isToTop)
{
    m_target = widget;
    m_isToTop = isToTop;
    m_start = verticalScrollBar()->value();
    m_animation->stop();
    m_animation->start();
    if (!reducesMotion(this))
        return;
    this->widget()->layout()->activate(); // gives newly opened sections their height
    m_animation->setCurrentTime(kScrollMilliseconds);
}

QSize SidebarScrollArea::sizeHint() const
{
    const QSize content = widget()->sizeHint();
    return {content.width() + verticalScrollBar()->sizeHint().width(),
            m_isAsHighAsContent ? content.height() : m_leastHeight};
}

QSize SidebarScrollArea::minimumSizeHint() const
{
    const QSize least = widget()->minimumSizeHint();
    return {least.width() + verticalScrollBar()->sizeHint().width(), std::min(m_leastHeight, least.height())};
}

bool SidebarScrollArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

void SidebarScrollArea::wheelEvent(QWheelEvent* event)
{
    m_animation->stop(); // scrolling by the user takes precedence
    QScrollArea::wheelEvent(event);
}

void SidebarScrollArea::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    m_topEdge->setGeometry(0, 0, width(), 1);
    m_bottomEdge->setGeometry(0, height() - 1, width(), 1);
}

void SidebarScrollArea::showEdges()
{
    m_topEdge->setVisible(verticalScrollBar()->value() > 0);
    // The lowest part needs no line below it.
    m_bottomEdge->setVisible(verticalScrollBar()->value() < verticalScrollBar()->maximum() &&
                             !m_isAsHighAsContent);
}

} // namespace orvanlite
