#pragma once

class QMenu;
class QWidget;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class PluginManagerViewModel;

/// The context menu of the plugin table for what is selected. It deletes itself when it closes.
[[nodiscard]] QMenu* makePluginContextMenu(PluginManagerViewModel& viewModel,
                                           const platform::Platform& platform, QWidget* parent);

} // namespace orvanlite
