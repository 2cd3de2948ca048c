#include "shell/toolkit/ViewUpdater.h"

#include <utility>

namespace orvanlite {

ViewUpdater::ViewUpdater(std::function<void()> render, QObject* parent)
    : QObject(parent)
    , m_render(std::move(render))
{}

void ViewUpdater::schedule()
{
    if (std::exchange(m_isDue, true))
        return;
    QMetaObject::invokeMethod(
        this, [this] { flush(); }, Qt::QueuedConnection);
}

void ViewUpdater::flush()
{
    if (std::exchange(m_isDue, false))
        m_render();
}

} // namespace orvanlite
