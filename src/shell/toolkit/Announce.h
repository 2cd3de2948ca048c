#pragma once

#include <QString>

class QWidget;

namespace orvanlite {

/// Has a screen reader say the text, which becomes the widget's accessible name: for what changes in sight without the
/// focus being there.
void announce(QWidget* widget, const QString& text);

} // namespace orvanlite
