#pragma once

#include <QString>

class QAbstractItemView;
class QWidget;

namespace orvanlite {

/// Has screen readers speak the text. For changes that do not move the focus.
void announce(QWidget* widget, const QString& text);

/// Has screen readers read the current row of a list that gets the focus; by default they only read the name
/// of the list.
void announceCurrentRow(QAbstractItemView* view);

} // namespace orvanlite
