#include "shell/table/PluginListView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "shell/table/PluginContextMenu.h"
#include "shell/table/PluginTableHeader.h"
#include "shell/table/PluginTableModel.h"
#include "shell/table/PluginTableView.h"
#include "shell/table/WorkStatusLine.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ManufacturerWebsites.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/Spinner.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Minimum number of plugins for the hint about keyboard navigation.
constexpr int kHintCount = 101;

/// Aligns the first column with the footer and the tool row.
constexpr int kTableInset = 10;
constexpr int kSpinnerSize = 12;

QLabel* caption(const QString& name, double size, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    setRelativeFont(label, size);
    label->setForegroundRole(QPalette::PlaceholderText); // used as the secondary text colour
    return label;
}

} // namespace

PluginListView::PluginListView(PluginManagerViewModel& viewModel, const platform::Platform& platform,
                               QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_platform(platform)
    , m_model(new PluginTableModel(platform.clock, this))
    , m_table(new PluginTableView(*m_model, this))
    , m_footer(new QWidget(this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"pluginListView"_s);
    buildFooter();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* inset = new QHBoxLayout;
    inset->setContentsMargins(kTableInset, 0, 0, 0);
    inset->addWidget(m_table);
    column->addLayout(inset, 1);
    column->addWidget(m_footer);
    m_noRows = new NoRowsView(m_table->viewport());
    connect(m_noRows, &NoRowsView::clearClicked, this, &PluginListView::clearFilters);
    auto* middle = new QVBoxLayout(m_table->viewport());
    middle->addWidget(m_noRows);
    connectTable();
    m_updates->watch(viewModel.displayedPlugins, viewModel.totalPluginCount, viewModel.selectedPlugins,
                     viewModel.activeProfile, viewModel.profileViewFilter, viewModel.cachedProfileChanges,
                     viewModel.sortOrder, viewModel.isLoading, viewModel.dbTotalCount);
    viewModel.isLoading.observe(this, [this] { m_hasScanned = m_hasScanned || !*m_viewModel.isLoading; });
    setTabOrder(m_table->header(), m_table);
    setTabOrder(m_table, m_noRows->button());
    setTabOrder(m_noRows->button(), m_loadAll);
    render();
}

void PluginListView::focusTable() { m_table->setFocus(); }

void PluginListView::startOver()
{
    m_updates->flush(); // a pending render would restore the scroll position
    m_table->startOver();
}

void PluginListView::buildFooter()
{
    m_footer->setObjectName(u"tableFooter"_s);
    m_shown = caption(u"shownLabel"_s, AppTheme::kCaption, m_footer);
    m_spinner = new Spinner(kSpinnerSize, m_footer);
    m_loadAll =
        new PressButton(u"Load All"_s, u"arrow.down.to.line"_s, PressButton::Ground::accent, m_footer);
    m_loadAll->setObjectName(u"loadAllButton"_s);
    setRelativeFont(m_loadAll, AppTheme::kCaption);
    m_hint = caption(u"keysHint"_s, AppTheme::kSmallCaption, m_footer);
    m_hint->setText(u"⌘↑ Top · ⌘↓ Bottom"_s);
    const auto native = [](Qt::Key key) {
        return QKeySequence(Qt::CTRL | key).toString(QKeySequence::NativeText);
    };
    m_hint->setToolTip(native(Qt::Key_Up) + u", "_s + native(Qt::Key_Down)); // for keyboards without a ⌘ key

    auto* row = new QHBoxLayout(m_footer);
    row->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace1, AppTheme::kSpace5, AppTheme::kSpace1);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(m_shown);
    row->addWidget(m_spinner);
    row->addSpacing(AppTheme::kSpace2);
    row->addWidget(new WorkStatusLine(m_viewModel, m_footer), 1);
    row->addWidget(m_loadAll);
    row->addWidget(m_hint);
    // Keeps the height when the hint replaces the button.
    const auto fit = [this] {
        m_footer->setMinimumHeight(m_loadAll->sizeHint().height() + 2 * AppTheme::kSpace1);
    };
    fit();
    onFontChange(m_footer, fit);
    connect(m_loadAll, &QAbstractButton::clicked, this, [this] { m_viewModel.loadAllPages(); });
}

void PluginListView::connectTable()
{
    connect(m_table->header(), &PluginTableHeader::sortRequested, this, &PluginListView::sortBy);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PluginListView::takeOverSelection);
    connect(m_table, &PluginTableView::nameNotFound, this, &PluginListView::loadAllRows);
    connect(m_table, &PluginTableView::viewportChanged, m_updates, &ViewUpdater::schedule);
    connect(m_table, &PluginTableView::linkActivated, this, [this](const QModelIndex& index) {
        m_platform.workspace.open(manufacturerWebsiteURL(m_model->plugin(index.row()).manufacturer));
    });
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QWidget::customContextMenuRequested, this, &PluginListView::showContextMenu);
    m_viewModel.selectedPlugins.observe(this, [this] { selectionChanged(); });
    connect(m_model, &PluginTableModel::toggleRequested, this, [this](const AudioPlugin& plugin) {
        // Accessibility actions bypass InputGate.
        if (!*m_viewModel.isRunningScript)
            detach(m_viewModel.togglePlugin(plugin));
    });
}

void PluginListView::render()
{
    const QScopedValueRollback rendering(m_isRendering, true);
    renderMode();
    renderRows();
    renderSelection();
    renderSort();
    renderFooter();
    loadMoreAtLastRow();
}

void PluginListView::renderMode()
{
    const std::optional<PluginProfile>& profile = *m_viewModel.activeProfile;
    const bool wasPreview = m_model->isPreview();
    m_model->setPreview(profile ? std::optional(profile->enabledPlugins) : std::nullopt);
    if (m_model->isPreview() == wasPreview)
        return;
    m_table->showModelColumns();
    m_footer->layout()->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace1, AppTheme::kSpace5,
                                           profile ? AppTheme::kSpace2 : AppTheme::kSpace1);
}

bool PluginListView::isPaged() const
{
    return !m_model->isPreview() || *m_viewModel.profileViewFilter != u"changes"_s;
}

bool PluginListView::isSameFirstPage(const AudioPlugins& rows) const
{
    const AudioPlugins& shown = m_model->plugins();
    const std::size_t page =
        std::min({rows.size(), shown.size(), std::size_t{PluginManagerViewModel::pageSize}});
    for (std::size_t i = 0; i < page; ++i) {
        if (rows[i].originalPath != shown[i].originalPath)
            return false;
    }
    return page > 0;
}

bool PluginListView::isOtherList()
{
    const std::optional<PluginProfile>& profile = *m_viewModel.activeProfile;
    const ShownList now{m_viewModel.currentFilter(), *m_viewModel.sortOrder,
                        profile ? std::optional(profile->id) : std::nullopt, *m_viewModel.profileViewFilter};
    return now != std::exchange(m_shownList, now);
}

void PluginListView::renderRows()
{
    // Remember the current row and scroll position. A scan creates new ids, but original paths are stable.
    const QModelIndex current = m_table->currentIndex();
    const QString currentPath = current.isValid() ? m_model->plugin(current.row()).originalPath : QString();
    const int column = current.column();
    QScrollBar& scrollBar = *m_table->verticalScrollBar();
    const int scroll = scrollBar.value();
    const int lowest = m_table->rowAt(m_table->viewport()->height() - 1);
    const int wantedRows = lowest < 0 ? m_model->rowCount() : lowest + 1;
    const bool isSamePage = isSameFirstPage(m_viewModel.filteredPlugins());

    m_model->setPlugins(m_viewModel.filteredPlugins());
    // A reload truncates the list to its first page: load the rows that were visible again.
    while (isSamePage && isPaged() && m_model->rowCount() < wantedRows && m_viewModel.hasMorePages()) {
        m_viewModel.loadMoreIfNeeded();
        m_model->setPlugins(m_viewModel.filteredPlugins());
    }
    const int row = currentPath.isEmpty() ? -1 : m_model->rowOf(currentPath);
    if (row >= 0 && row != m_table->currentIndex().row()) {
        m_table->setAutoScroll(false); // do not scroll to the new position of the row
        m_table->selectionModel()->setCurrentIndex(m_model->index(row, column),
                                                   QItemSelectionModel::NoUpdate);
        m_table->setAutoScroll(true);
    }
    m_table->keepACurrentRow();
    if (isOtherList()) {
        scrollBar.setValue(0); // a new search or sort order starts at the top
    } else if (scrollBar.value() != scroll) {
        m_table->doItemsLayout(); // updates the scroll range
        scrollBar.setValue(scroll);
    }
}

void PluginListView::renderSelection()
{
    const QSet<QUuid>& wanted = *m_viewModel.selectedPlugins;
    QItemSelectionModel* selection = m_table->selectionModel();
    QItemSelection rows;
    bool differs = false;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const bool isWanted = wanted.contains(m_model->plugin(row).id);
        differs = differs || isWanted != selection->isRowSelected(row);
        if (isWanted)
            rows.append(
                QItemSelectionRange(m_model->index(row, 0), m_model->index(row, kPluginColumnCount - 1)));
    }
    if (differs)
        selection->select(rows, QItemSelectionModel::ClearAndSelect);
}

void PluginListView::renderSort()
{
    const PluginSortOrder& order = *m_viewModel.sortOrder;
    const PluginComparator first = order.empty() ? PluginComparator{} : order.front();
    const auto found = std::find_if(kPluginColumns.begin(), kPluginColumns.end(),
                                    [&](const PluginColumnRow& each) { return each.sortKey == first.key; });
    m_table->header()->setSortIndicator(static_cast<int>(found - kPluginColumns.begin()),
                                        first.order == PluginSortDirection::forward ? Qt::AscendingOrder
                                                                                    : Qt::DescendingOrder);
}

void PluginListView::renderFooter()
{
    m_shown->setText(u"Showing %1 of %2 plugins"_s.arg(m_viewModel.filteredPlugins().size())
                         .arg(*m_viewModel.totalPluginCount));
    const bool hasMore = m_viewModel.hasMorePages();
    m_spinner->setVisible(hasMore);
    if (!hasMore && m_loadAll->hasFocus())
        m_table->setFocus(); // before hiding the button moves the focus elsewhere
    const NoRowsView::Reason reason = noRowsReason();
    if (!reason.isFiltered && m_noRows->button()->hasFocus())
        m_table->setFocus();
    m_noRows->setReason(reason);
    m_loadAll->setVisible(hasMore);
    m_hint->setVisible(!hasMore && *m_viewModel.totalPluginCount >= kHintCount);
}

void PluginListView::sortBy(int column)
{
    const PluginSortKey key = pluginColumn(column).sortKey;
    PluginSortOrder order = *m_viewModel.sortOrder;
    PluginComparator first{key, PluginSortDirection::forward};
    if (!order.empty() && order.front() == first)
        first.order = PluginSortDirection::reverse;
    std::erase_if(order, [key](const PluginComparator& each) { return each.key == key; });
    order.insert(order.begin(), first);
    m_viewModel.sortOrder = std::move(order);
}

void PluginListView::takeOverSelection()
{
    if (m_isRendering)
        return;
    QSet<QUuid> selected;
    for (const QItemSelectionRange& range : m_table->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            selected.insert(m_model->plugin(row).id);
    }
    m_viewModel.selectedPlugins = std::move(selected);
}

void PluginListView::selectionChanged()
{
    // Rows selected in a preview are added with the first change after it.
    if (*m_viewModel.activeProfile)
        return;
    const QSet<QUuid> now = *m_viewModel.selectedPlugins;
    const QSet<QUuid> before = std::exchange(m_previousSelectedPlugins, now);
    if (now == before)
        return;
    // On purpose: deselected rows stay in the persisted selection. Only the bulk pane removes plugins from
    // it.
    m_viewModel.collectSelection(now - before);
}

void PluginListView::showContextMenu(const QPoint& position)
{
    if (m_model->isPreview())
        return;
    const QModelIndex index = m_table->indexAt(position);
    const QUuid pointed = index.isValid() ? m_model->plugin(index.row()).id : QUuid();
    QMenu* menu = makePluginContextMenu(m_viewModel, m_platform, pointed, m_table);
    if (menu->isEmpty())
        delete menu;
    else
        menu->popup(m_table->viewport()->mapToGlobal(position));
}

bool PluginListView::loadsMore() const { return isPaged() && m_viewModel.hasMorePages(); }

void PluginListView::loadMoreAtLastRow()
{
    // A tab of a preview may show none of the rows loaded so far.
    if (isVisible() && loadsMore() && (m_table->showsLastRow() || m_model->rowCount() == 0))
        m_viewModel.loadMoreIfNeeded();
}

void PluginListView::loadAllRows()
{
    if (!loadsMore())
        return;
    m_viewModel.loadAllPages();
    m_updates->flush();
}

NoRowsView::Reason PluginListView::noRowsReason() const
{
    if (m_model->rowCount() > 0 || !m_hasScanned || loadsMore())
        return {};
    if (*m_viewModel.dbTotalCount == 0)
        return {u"No plugins found on this computer"_s, u"Install plugins, then press \"Scan\"."_s};
    const QString& slice = *m_viewModel.profileViewFilter;
    if (m_model->isPreview() && slice == u"changes")
        return {u"Nothing to change"_s, u"All plugins are in the state of the profile."_s};
    const PluginFilter filter = m_viewModel.currentFilter();
    const bool isFiltered = !filter.searchText.isEmpty() || filter.hasSidebarFilters();
    const QString which = filter.searchText.isEmpty()  ? u"the filters"_s
                          : filter.hasSidebarFilters() ? u"the search and the filters"_s
                                                       : u"the search"_s;
    const QString match = isFiltered ? u" that match "_s + which : QString();
    if (m_model->isPreview() && slice == u"enabled")
        return {u"No plugins stay enabled"_s + match, {}, isFiltered};
    if (m_model->isPreview() && slice == u"disabled")
        return {u"No plugins stay disabled"_s + match, {}, isFiltered};
    return {isFiltered ? u"No plugins match "_s + which : u"No plugins to show"_s, {}, isFiltered};
}

void PluginListView::clearFilters()
{
    m_viewModel.searchText.clear(); // first: the others reload at once
    m_viewModel.selectedFormats.clear();
    m_viewModel.selectedManufacturers.clear();
}

} // namespace orvanlite
