#pragma once

#include "catalogue/PluginFilter.h"
#include "model/AudioPlugin.h"
#include "operations/PluginSort.h"

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

/// The plugin table over its footer, bound to the view model: rows, sort and selection both ways, the next page
/// when the last row comes into view.
class PluginListView final : public QWidget {
    Q_OBJECT

public:
    PluginListView(PluginManagerViewModel& viewModel, const platform::Platform& platform, QWidget* parent);

    void focusTable();
    /// Back to the first row, with none current.
    void startOver();

private:
    void buildFooter();
    void connectTable();
    void render();
    /// Plain table or preview.
    void renderMode();
    void renderRows();
    void renderSort();
    void renderSelection();
    void renderFooter();
    void sortBy(int column);
    void takeOverSelection();
    /// What the table marks has changed, by whomever: new marks join the selection.
    void selectionChanged();
    void showContextMenu(const QPoint& position);
    void loadMoreAtLastRow();
    /// Whether the list grows by pages: the changes under a preview are all there.
    [[nodiscard]] bool isPaged() const;
    [[nodiscard]] bool isSameFirstPage(const AudioPlugins& rows) const;
    /// Whether the filters, the sort or the preview have changed since the last call.
    [[nodiscard]] bool isOtherList();

    /// Filter, sort, id of the profile under preview and the preview's tab.
    using ShownList = std::tuple<PluginFilter, PluginSortOrder, std::optional<QUuid>, QString>;

    PluginManagerViewModel& m_viewModel;
    const platform::Platform& m_platform;
    PluginTableModel* m_model;
    PluginTableView* m_table;
    QWidget* m_footer;
    QLabel* m_shown;
    Spinner* m_spinner;
    QLabel* m_empty;
    PressButton* m_loadAll;
    QLabel* m_hint;
    ViewUpdater* m_updates;
    bool m_isRendering = false;
    bool m_hasScanned = false;
    QSet<QUuid> m_previousSelectedPlugins;
    ShownList m_shownList;
};

} // namespace orvanlite
