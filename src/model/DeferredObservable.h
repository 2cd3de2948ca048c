#pragma once

#include "model/Observable.h"

#include <functional>
#include <utility>

namespace orvanlite {

/// An Observable for values that are expensive and rarely read: an assignment takes a function, which runs
/// when the value is first read. Observers are notified at the assignment.
template <typename T>
class DeferredObservable {
public:
    const T& operator*() const
    {
        if (m_compute)
            m_value = std::exchange(m_compute, nullptr)();
        return m_value;
    }
    const T* operator->() const { return &**this; }

    void defer(std::function<T()> compute)
    {
        m_compute = std::move(compute);
        Q_EMIT m_signal.assigned();
    }
    /// Assigns a default-constructed value.
    void clear()
    {
        m_value = T{};
        defer(nullptr);
    }
    [[nodiscard]] bool isDeferred() const { return m_compute != nullptr; }

    /// Calls the function after every assignment until the context is destroyed.
    template <typename Function>
    QMetaObject::Connection observe(QObject* context, Function&& function) const
    {
        return QObject::connect(&m_signal, &AssignmentSignal::assigned, context,
                                std::forward<Function>(function));
    }

private:
    mutable T m_value{};
    mutable std::function<T()> m_compute;
    AssignmentSignal m_signal;
};

} // namespace orvanlite
