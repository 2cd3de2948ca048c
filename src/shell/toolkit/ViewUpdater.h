#pragma once

#include "model/Observable.h"

#include <QObject>

#include <functional>

namespace orvanlite {

/// Turns all notifications of one turn of the event loop into one call of a view's render function.
class ViewUpdater final : public QObject {
public:
    explicit ViewUpdater(std::function<void()> render, QObject* parent = nullptr);

    /// Renders once, in the next turn, after any of these has been assigned.
    template <typename... Values>
    void watch(const Observable<Values>&... values)
    {
        (values.observe(this, [this] { schedule(); }), ...);
    }

    void schedule();
    /// Renders now if a call is due.
    void flush();

private:
    std::function<void()> m_render;
    bool m_isDue = false;
};

} // namespace orvanlite
