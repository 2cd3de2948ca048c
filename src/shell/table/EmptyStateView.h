#pragma once

#include <QWidget>

namespace orvanlite {

class PluginManagerViewModel;

/// Shown instead of the table while no category is selected. Operations can be started from the sidebar
/// meanwhile, so it has the status line of the table's footer.
class EmptyStateView final : public QWidget {
    Q_OBJECT

public:
    EmptyStateView(const PluginManagerViewModel& viewModel, QWidget* parent);
};

} // namespace orvanlite
