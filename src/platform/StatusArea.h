#pragma once

#include <functional>

class QObject;

namespace orvanlite::platform {

/// Calls the handler once, possibly immediately, when a menu bar or tray item can be created; outside Wayland
/// after 30 s at the latest, as an X11 tray cannot be detected. At login the agent may start before the tray,
/// and an item created too early never appears. Never called on Linux without a session bus, or after
/// `context` is destroyed.
void whenStatusAreaIsReady(QObject* context, std::function<void()> handler);

/// Whether a primary click on an item opens its menu; otherwise another button does.
[[nodiscard]] bool clickOpensStatusMenu();

} // namespace orvanlite::platform
