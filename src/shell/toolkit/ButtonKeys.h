#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace orvanlite {

/// Return does on a button with the focus what Space does; a key that is held down presses once. True for a key that
/// has been used.
inline bool pressByReturn(QAbstractButton& button, const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter)
        return false;
    if (!event.isAutoRepeat())
        button.click();
    return true;
}

} // namespace orvanlite
