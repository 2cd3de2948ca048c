#pragma once

class QWidget;

namespace orvanlite {

/// Shows or hides a part of a window. If the part has the focus when it is hidden, the focus moves to `heir`,
/// even while a dialog is in front of the window.
void present(QWidget* part, bool isPresent, QWidget* heir);

} // namespace orvanlite
