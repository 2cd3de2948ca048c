#include "shell/app/FirstPaint.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace orvanlite {

FirstPaint::FirstPaint(QWidget* widget, QObject* context, std::function<void()> then)
    : QObject(widget)
    , m_context(context)
    , m_then(std::move(then))
{
    widget->installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint || event->type() == QEvent::Hide) {
        watched->removeEventFilter(this);
        if (m_context)
            QTimer::singleShot(0, m_context, std::move(m_then));
        deleteLater();
    }
    return false;
}

} // namespace orvanlite
