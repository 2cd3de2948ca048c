#pragma once

#include <QIcon>

#include <optional>

namespace orvanlite {

/// Icon of the menu-bar item: a tile with the number cut out, so that it is legible on any background, or
/// with sound bars while there is no number. From 1000 on, in thousands.
[[nodiscard]] QIcon countIcon(std::optional<int> count);

} // namespace orvanlite
