#pragma once

#include <QFont>

class QWidget;

namespace orvanlite {

/// Gives the widget the font of its parent at another size and weight, and follows when that font changes.
void setRelativeFont(QWidget* widget, double factor, QFont::Weight weight = QFont::Normal);

} // namespace orvanlite
