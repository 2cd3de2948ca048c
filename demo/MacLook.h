#pragma once

namespace orvanlite::demo {

/// Must run before the application is created: on a Mac, a point is a pixel.
void useMacResolution();

/// Sets the fonts and palettes that Qt takes over from macOS, for the application and for single classes of
/// widgets, as at the start and whenever the system's theme changes. Our own must not depend on them.
/// Source: the documented system colours and text styles, and Qt's mapping of them. Inter stands in for the
/// system's font, whose line height it has.
void takeOverMacTheme(bool isDark);

} // namespace orvanlite::demo
