#pragma once

#include <QFont>

#include <functional>

class QWidget;

namespace orvanlite {

/// Sets the font of the parent, scaled and with the given weight, and keeps it in sync with later changes of
/// the parent.
void setRelativeFont(QWidget* widget, double factor, QFont::Weight weight = QFont::Normal);

/// Calls the function soon after each change of the widget's font, when its children have theirs.
void onFontChange(QWidget* widget, std::function<void()> changed);

} // namespace orvanlite
