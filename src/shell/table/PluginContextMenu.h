#pragma once

class QMenu;
class QUuid;
class QWidget;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class PluginManagerViewModel;

/// The context menu of the plugin table for what is selected. The entries for one plugin are those of `pointed` if it
/// is selected, otherwise of the first selected row. The menu deletes itself when it closes.
[[nodiscard]] QMenu* makePluginContextMenu(PluginManagerViewModel& viewModel,
                                           const platform::Platform& platform, const QUuid& pointed,
                                           QWidget* parent);

} // namespace orvanlite
