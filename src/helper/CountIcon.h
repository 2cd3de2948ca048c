#pragma once

#include <QIcon>

#include <optional>

namespace orvanlite {

/// The picture of the menu-bar item: a tile with the number cut out of it, so that it is read on every ground; bars
/// of sound while there is no number. From 1000 on it counts in thousands.
[[nodiscard]] QIcon countIcon(std::optional<int> count);

} // namespace orvanlite
