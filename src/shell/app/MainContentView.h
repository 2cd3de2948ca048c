#pragma once

#include "records/ExportOptions.h"
#include "shell/toolkit/Services.h"

#include <QWidget>

#include <functional>

class QHBoxLayout;
class QStackedWidget;

namespace orvanlite {

class BulkActionsView;
class DragHandle;
class EmptyStateView;
class PluginListView;
class PressButton;
class PreviewStrip;
class ViewUpdater;
struct BulkConfirmation;

/// The detail column: the tool row above one of three bodies: the empty state, the plugin table, or the table
/// with the bulk pane while plugins are selected.
class MainContentView final : public QWidget {
    Q_OBJECT

public:
    MainContentView(const Services& services, BulkConfirmation& confirmation,
                    std::function<void()> onResetTapped, QWidget* parent);

    /// Height of the bulk pane's list in logical pixels, 80 to 500.
    [[nodiscard]] double bulkPaneHeight() const { return m_bulkPaneHeight; }

private:
    void buildToolRow(QWidget* row);
    PressButton* addToolButton(QHBoxLayout* row, const QString& text, const QString& iconKey);
    void render();
    void reset();
    void resizeBulkPane(double translation);
    void showExportPicker();
    void exportPlugins();

    const Services m_services;
    PluginManagerViewModel& m_viewModel;
    const std::function<void()> m_onResetTapped;
    PressButton* m_reset = nullptr;
    PreviewStrip* m_preview = nullptr;
    QStackedWidget* m_body;
    EmptyStateView* m_emptyState;
    PluginListView* m_list;
    DragHandle* m_handle;
    BulkActionsView* m_bulkActions;
    double m_bulkPaneHeight = 200;
    ExportFormat m_exportFormat = ExportFormat::pdf;
    ExportSortOption m_exportSortOption = ExportSortOption::name;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
