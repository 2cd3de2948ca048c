#pragma once

namespace orvanlite::platform {

/// Whether a compositor of the X server blends translucent windows with what is behind them. Without one,
/// their translucent pixels are black. Other display servers always blend.
[[nodiscard]] bool blendsWindowsOnX11();

} // namespace orvanlite::platform
