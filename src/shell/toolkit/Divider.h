#pragma once

class QWidget;

namespace orvanlite {

/// A one-pixel line between two parts, horizontal unless resized.
[[nodiscard]] QWidget* makeDivider(QWidget* parent);

} // namespace orvanlite
