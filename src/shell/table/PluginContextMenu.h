#pragma once

class QMenu;
class QUuid;
class QWidget;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class PluginManagerViewModel;

/// The context menu of the plugin table for the selected rows. The entries for a single plugin apply to
/// `pointed` if it is selected, otherwise to the first selected row. The menu deletes itself when it closes.
[[nodiscard]] QMenu* makePluginContextMenu(PluginManagerViewModel& viewModel,
                                           const platform::Platform& platform, const QUuid& pointed,
                                           QWidget* parent);

} // namespace orvanlite
