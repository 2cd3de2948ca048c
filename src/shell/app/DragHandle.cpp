#include "shell/app/DragHandle.h"

#include "shell/toolkit/AppTheme.h"

#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kHeight = 12;
constexpr QSizeF kPill(40, 4);
constexpr double kShortestDrag = 10;
constexpr double kKeyStep = 20;

/// With the role of the sidebar's handle.
QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    auto* handle = qobject_cast<DragHandle*>(object);
    const bool isMeant = handle && className == QLatin1StringView(handle->metaObject()->className());
    return isMeant ? new QAccessibleWidget(handle, QAccessible::Grip) : nullptr;
}

} // namespace

DragHandle::DragHandle(QWidget* parent)
    : QWidget(parent)
{
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled)
    setObjectName(u"bulkPaneHandle"_s);
    setAccessibleName(u"Resize bulk pane"_s);
    setFixedHeight(kHeight);
    setCursor(Qt::SizeVerCursor);
    setFocusPolicy(Qt::StrongFocus);
}

void DragHandle::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), AppTheme::withOpacity(AppTheme::separator(palette()), 0.3));
    const QRectF pill(QPointF((width() - kPill.width()) / 2, (height() - kPill.height()) / 2), kPill);
    painter.setPen(Qt::NoPen);
    painter.setBrush(hasFocus() ? AppTheme::accent(palette())
                                : AppTheme::withOpacity(AppTheme::secondary(palette()), 0.5));
    painter.drawRoundedRect(pill, 2, 2);
}

void DragHandle::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_start = event->globalPosition();
}

void DragHandle::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_start)
        return;
    const QPointF translation = event->globalPosition() - *m_start;
    m_isDragging = m_isDragging || std::hypot(translation.x(), translation.y()) >= kShortestDrag;
    if (m_isDragging)
        Q_EMIT dragged(translation.y());
}

void DragHandle::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    m_start.reset();
    m_isDragging = false;
}

void DragHandle::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up)
        Q_EMIT dragged(-kKeyStep);
    else if (event->key() == Qt::Key_Down)
        Q_EMIT dragged(kKeyStep);
    else
        QWidget::keyPressEvent(event);
}

void DragHandle::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void DragHandle::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

} // namespace orvanlite
