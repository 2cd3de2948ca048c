#pragma once

class QWidget;

namespace orvanlite {

/// A line of one pixel between two parts, horizontal unless it is given another size.
[[nodiscard]] QWidget* makeDivider(QWidget* parent);

} // namespace orvanlite
