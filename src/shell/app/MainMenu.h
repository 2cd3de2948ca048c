#pragma once

#include <functional>

class QKeySequence;
class QMainWindow;

namespace orvanlite::platform {
class MainBundle;
}

namespace orvanlite {

/// Builds the main menu: the application menu, "Edit" and "Window". It is in the global menu bar if the
/// system has one, otherwise in the window. "Check for Updates…" calls `checkForUpdates`.
void buildMenuBar(QMainWindow& window, const platform::MainBundle& bundle,
                  std::function<void()> checkForUpdates);

/// Whether this is the shortcut of "Close Window" or "Quit Orvanlite".
[[nodiscard]] bool isClosingKey(const QKeySequence& key);

} // namespace orvanlite
