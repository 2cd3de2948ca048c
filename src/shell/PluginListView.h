#pragma once

#include "model/AudioPlugin.h"

#include <QSet>
#include <QWidget>

#include <optional>

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

private:
    void buildFooter();
    void connectTable();
    void render();
    void renderRows();
    void putBackPlace();
    void renderSort();
    void renderSelection();
    void renderFooter();
    void sortBy(int column);
    void takeOverSelection();
    void loadMoreAtLastRow();
    [[nodiscard]] bool isSameFirstPage(const AudioPlugins& rows) const;

    PluginManagerViewModel& m_viewModel;
    const platform::Platform& m_platform;
    PluginTableModel* m_model;
    PluginTableView* m_table;
    QWidget* m_footer;
    QLabel* m_shown;
    Spinner* m_spinner;
    PressButton* m_loadAll;
    QLabel* m_hint;
    ViewUpdater* m_updates;
    bool m_isRendering = false;
    /// Where the view stood before a reload cut its rows to the first page; kept until enough pages are back.
    std::optional<int> m_wantedScroll;
    int m_wantedRows = 0; ///< as many as reach down to the lower edge of the view
    /// The row and column that were current then; a null id when there is none to put back.
    QUuid m_wantedCurrent;
    int m_wantedColumn = 0;
};

} // namespace orvanlite
