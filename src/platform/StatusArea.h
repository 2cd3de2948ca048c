#pragma once

#include <functional>

class QObject;

namespace orvanlite::platform {

/// Calls the handler once, when an item for the menu bar or tray can be made: maybe at once, at the latest after half a
/// minute where a tray may be there that cannot be asked for. At login an agent may be up before the desktop's tray is,
/// and an item that is made too early never shows. Never called in a session without services for its applications, nor
/// after `context` has gone.
void whenStatusAreaIsReady(QObject* context, std::function<void()> handler);

/// Whether a plain click on an item opens its menu; otherwise that is for another button.
[[nodiscard]] bool clickOpensStatusMenu();

} // namespace orvanlite::platform
