#pragma once

class QWidget;

namespace orvanlite {

/// Shows or hides a part of a window. Before a part that has the focus goes from sight, the focus goes to the heir, also
/// while a dialog of the window is in front.
void present(QWidget* part, bool isPresent, QWidget* heir);

} // namespace orvanlite
