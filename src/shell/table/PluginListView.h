#pragma once

#include "catalogue/PluginFilter.h"
#include "model/AudioPlugin.h"
#include "operations/PluginSort.h"
#include "shell/table/NoRowsView.h"

#include <QSet>
#include <QUuid>
#include <QWidget>

#include <optional>
#include <tuple>

class QLabel;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class PluginManagerViewModel;
class PluginTableModel;
class PluginTableView;
class PressButton;
class Spinner;
class ViewUpdater;

/// The plugin table with its footer. Keeps rows, sort order and selection in sync with the view model and
/// loads the next page when the last row becomes visible.
class PluginListView final : public QWidget {
    Q_OBJECT

public:
    PluginListView(PluginManagerViewModel& viewModel, const platform::Platform& platform, QWidget* parent);

    void focusTable();
    /// Scrolls to the top and clears the current row.
    void startOver();

private:
    void buildFooter();
    void connectTable();
    void render();
    /// Switches between the plain table and a preview.
    void renderMode();
    void renderRows();
    void renderSort();
    void renderSelection();
    void renderFooter();
    void sortBy(int column);
    void takeOverSelection();
    /// Adds rows newly selected in the table or elsewhere to the persisted selection.
    void selectionChanged();
    void showContextMenu(const QPoint& position);
    /// Continues a search for a name beyond the loaded rows.
    void loadAllRows();
    /// Loads the next page while the rows do not fill the view.
    void loadMoreAtLastRow();
    [[nodiscard]] bool loadsMore() const;
    [[nodiscard]] NoRowsView::Reason noRowsReason() const;
    void clearFilters();
    /// Whether the list is loaded in pages: the changes of a preview are loaded completely.
    [[nodiscard]] bool isPaged() const;
    [[nodiscard]] bool isSameFirstPage(const AudioPlugins& rows) const;
    /// Whether filters, sort order or preview have changed since the last call.
    [[nodiscard]] bool isOtherList();

    /// Filter, sort order, id of the previewed profile, and tab of the preview.
    using ShownList = std::tuple<PluginFilter, PluginSortOrder, std::optional<QUuid>, QString>;

    PluginManagerViewModel& m_viewModel;
    const platform::Platform& m_platform;
    PluginTableModel* m_model;
    PluginTableView* m_table;
    QWidget* m_footer;
    QLabel* m_shown;
    Spinner* m_spinner;
    NoRowsView* m_noRows;
    PressButton* m_loadAll;
    QLabel* m_hint;
    ViewUpdater* m_updates;
    bool m_isRendering = false;
    bool m_hasScanned = false;
    QSet<QUuid> m_previousSelectedPlugins;
    ShownList m_shownList;
};

} // namespace orvanlite
