#pragma once

#include <QObject>

#include <utility>

namespace orvanlite {

/// The signal of an Observable.
class AssignmentSignal final : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void assigned();
};

/// A value that notifies its observers of every assignment, even of an equal value.
///
/// Observers are called in the order in which they were added. An owner adds its own first, so that its
/// follow-up steps run before any view is notified.
template <typename T>
class Observable {
public:
    explicit Observable(T initial = T{})
        : m_value(std::move(initial))
    {}

    [[nodiscard]] const T& get() const { return m_value; }
    const T& operator*() const { return m_value; }
    const T* operator->() const { return &m_value; }

    Observable& operator=(T value)
    {
        set(std::move(value));
        return *this;
    }
    void set(T value)
    {
        m_value = std::move(value);
        Q_EMIT m_signal.assigned();
    }
    /// Assigns a default-constructed value.
    void clear() { set(T{}); }
    /// Changes the value in place and notifies once.
    template <typename Function>
    void mutate(Function&& change)
    {
        std::forward<Function>(change)(m_value);
        Q_EMIT m_signal.assigned();
    }

    /// Calls the function after every assignment until the context is destroyed.
    template <typename Function>
    QMetaObject::Connection observe(QObject* context, Function&& function) const
    {
        return QObject::connect(&m_signal, &AssignmentSignal::assigned, context,
                                std::forward<Function>(function));
    }

private:
    T m_value;
    AssignmentSignal m_signal;
};

} // namespace orvanlite
