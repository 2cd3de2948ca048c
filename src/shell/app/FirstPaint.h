#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QWidget;

namespace orvanlite {

/// Calls a function once, from the event loop, after a widget has been painted for the first time, or when it
/// is closed before that. For work that occupies the thread.
class FirstPaint final : public QObject {
public:
    /// Owned by the widget.
    FirstPaint(QWidget* widget, QObject* context, std::function<void()> then);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QObject> m_context;
    std::function<void()> m_then;
};

} // namespace orvanlite
