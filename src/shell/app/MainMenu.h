#pragma once

#include <functional>

class QMainWindow;

namespace orvanlite::platform {
class MainBundle;
}

namespace orvanlite {

/// Builds the main menu: the application's own menu, "Edit" and "Window". Where the system has one menu bar for all
/// applications it stands there, otherwise in the window. "Check for Updates…" calls `checkForUpdates`.
void buildMenuBar(QMainWindow& window, const platform::MainBundle& bundle,
                  std::function<void()> checkForUpdates);

} // namespace orvanlite
