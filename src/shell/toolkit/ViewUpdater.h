#pragma once

#include "model/Observable.h"

#include <QObject>

#include <functional>

namespace orvanlite {

/// Coalesces all notifications of one event loop iteration into a single call of a view's render function.
class ViewUpdater final : public QObject {
public:
    explicit ViewUpdater(std::function<void()> render, QObject* parent = nullptr);

    /// Renders once in the next iteration after any of these has been assigned.
    template <typename... Values>
    void watch(const Observable<Values>&... values)
    {
        (values.observe(this, [this] { schedule(); }), ...);
    }

    void schedule();
    /// Renders now if a call is pending.
    void flush();

private:
    std::function<void()> m_render;
    bool m_isDue = false;
};

} // namespace orvanlite
