#pragma once

#include <QFont>

class QWidget;

namespace orvanlite {

/// Sets the font of the parent, scaled and with the given weight, and keeps it in sync with later changes of
/// the parent.
void setRelativeFont(QWidget* widget, double factor, QFont::Weight weight = QFont::Normal);

} // namespace orvanlite
