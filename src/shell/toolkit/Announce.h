#pragma once

#include <QString>

class QWidget;

namespace orvanlite {

/// Sets the accessible name to the text and has screen readers speak it. For visible changes that do not move
/// the focus.
void announce(QWidget* widget, const QString& text);

} // namespace orvanlite
