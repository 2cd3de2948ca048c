#pragma once

#include <QWidget>

class QLabel;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class BulkActionsView;
class DragHandle;
class PluginListView;
class PluginManagerViewModel;
class PressButton;
class ViewUpdater;
struct BulkConfirmation;

/// The detail column: the tool row over the plugin table, and while anything is selected the bulk pane under it.
class MainContentView final : public QWidget {
    Q_OBJECT

public:
    MainContentView(PluginManagerViewModel& viewModel, BulkConfirmation& confirmation,
                    const platform::Platform& platform, QWidget* parent);

    /// Height of the bulk pane's list, from 80 to 500.
    [[nodiscard]] double bulkPaneHeight() const { return m_bulkPaneHeight; }

private:
    void buildToolRow(QWidget* row, const platform::Platform& platform);
    void render();
    void resizeBulkPane(double translation);

    PluginManagerViewModel& m_viewModel;
    PressButton* m_scan = nullptr;
    PluginListView* m_list;
    DragHandle* m_handle;
    BulkActionsView* m_bulkActions;
    double m_bulkPaneHeight = 200;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
