#include "shell/PluginListView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Appearance.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "shell/AppTheme.h"
#include "shell/ManufacturerWebsites.h"
#include "shell/PluginTableHeader.h"
#include "shell/PluginTableModel.h"
#include "shell/PluginTableView.h"
#include "shell/PressButton.h"
#include "shell/Spinner.h"
#include "shell/ViewUpdater.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// From this number of plugins on the list is long enough for the hint on its keys.
constexpr int kHintCount = 101;

/// Brings the first column in line with the footer and the tool row.
constexpr int kTableInset = 10;

constexpr std::array<PluginSortKey, kPluginColumnCount> kColumnSortKeys{
    PluginSortKey::statusValue, PluginSortKey::name,         PluginSortKey::manufacturer,
    PluginSortKey::format,      PluginSortKey::versionValue, PluginSortKey::lastUsedValue};

QFont scaled(const QFont& font, double factor)
{
    QFont made = font;
    made.setPointSizeF(font.pointSizeF() * factor);
    return made;
}

QLabel* caption(const QString& name, double size, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setFont(scaled(label->font(), size));
    label->setForegroundRole(QPalette::PlaceholderText); // the palette's secondary text
    return label;
}

} // namespace

PluginListView::PluginListView(PluginManagerViewModel& viewModel, const platform::Platform& platform,
                               QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_platform(platform)
    , m_model(new PluginTableModel(platform.clock, this))
    , m_table(new PluginTableView(*m_model, platform.appearance.reducesMotion(), this))
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
    connectTable();
    m_updates->watch(viewModel.displayedPlugins, viewModel.totalPluginCount, viewModel.selectedPlugins,
                     viewModel.sortOrder);
    render();
}

void PluginListView::buildFooter()
{
    m_footer->setObjectName(u"tableFooter"_s);
    m_shown = caption(u"shownLabel"_s, 0.92, m_footer);
    m_spinner = new Spinner(12, m_platform.appearance.reducesMotion(), m_footer);
    m_loadAll =
        new PressButton(u"Load All"_s, u"arrow.down.to.line"_s, PressButton::Ground::accent, m_footer);
    m_loadAll->setObjectName(u"loadAllButton"_s);
    m_loadAll->setFont(scaled(m_loadAll->font(), 0.92));
    m_loadAll->setReducesMotion(m_platform.appearance.reducesMotion());
    m_hint = caption(u"keysHint"_s, 0.82, m_footer);
    m_hint->setText(u"⌘↑ Top · ⌘↓ Bottom"_s);

    auto* row = new QHBoxLayout(m_footer);
    row->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace1, AppTheme::kSpace5, AppTheme::kSpace1);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(m_shown);
    row->addWidget(m_spinner);
    row->addStretch(1);
    row->addWidget(m_loadAll);
    row->addWidget(m_hint);
    // The row keeps its height when the button makes way for the hint.
    m_footer->setMinimumHeight(m_loadAll->sizeHint().height() + 2 * AppTheme::kSpace1);
    connect(m_loadAll, &QAbstractButton::clicked, this, [this] { m_viewModel.loadAllPages(); });
}

void PluginListView::connectTable()
{
    connect(m_table->header(), &PluginTableHeader::sortRequested, this, &PluginListView::sortBy);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PluginListView::takeOverSelection);
    connect(m_table, &PluginTableView::viewportChanged, m_updates, &ViewUpdater::schedule);
    connect(m_table->verticalScrollBar(), &QAbstractSlider::actionTriggered, this,
            [this] { m_wantedScroll.reset(); });
    connect(m_table, &PluginTableView::linkActivated, this, [this](const QModelIndex& index) {
        m_platform.workspace.open(manufacturerWebsiteURL(m_model->plugin(index.row()).manufacturer));
    });
    connect(m_model, &PluginTableModel::toggleRequested, this,
            [this](const AudioPlugin& plugin) { detach(m_viewModel.togglePlugin(plugin)); });
}

void PluginListView::render()
{
    const QScopedValueRollback rendering(m_isRendering, true);
    renderRows();
    renderSelection();
    renderSort();
    renderFooter();
    loadMoreAtLastRow();
}

bool PluginListView::isSameFirstPage(const AudioPlugins& rows) const
{
    const AudioPlugins& shown = m_model->plugins();
    const std::size_t page =
        std::min({rows.size(), shown.size(), std::size_t{PluginManagerViewModel::pageSize}});
    for (std::size_t i = 0; i < page; ++i) {
        if (rows[i].id != shown[i].id)
            return false;
    }
    return page > 0;
}

void PluginListView::renderRows()
{
    const AudioPlugins& rows = m_viewModel.filteredPlugins();
    const bool isSamePage = isSameFirstPage(rows);
    if (isSamePage && rows.size() < m_model->plugins().size()) {
        m_wantedScroll = m_table->verticalScrollBar()->value();
        const int lowest = m_table->rowAt(m_table->viewport()->height() - 1);
        m_wantedRows = lowest < 0 ? m_model->rowCount() : lowest + 1;
    } else if (!isSamePage) {
        m_wantedScroll.reset();
    }

    const QModelIndex current = m_table->currentIndex();
    if (current.isValid() && m_wantedCurrent.isNull()) {
        m_wantedCurrent = m_model->plugin(current.row()).id;
        m_wantedColumn = current.column();
    }
    m_model->setPlugins(rows);
    putBackPlace();
}

void PluginListView::putBackPlace()
{
    if (const int row = m_wantedCurrent.isNull() ? -1 : m_model->rowOf(m_wantedCurrent); row >= 0) {
        m_table->selectionModel()->setCurrentIndex(m_model->index(row, m_wantedColumn),
                                                   QItemSelectionModel::NoUpdate);
        m_wantedCurrent = QUuid();
    }
    if (m_wantedScroll) {
        m_table->doItemsLayout(); // the scroll bar must know of the new rows
        m_table->verticalScrollBar()->setValue(*m_wantedScroll);
        if (m_model->rowCount() >= m_wantedRows || !m_viewModel.hasMorePages())
            m_wantedScroll.reset();
    }
    if (!m_wantedScroll)
        m_wantedCurrent = QUuid(); // no further page is on its way that could hold it
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
    const auto found = std::find(kColumnSortKeys.begin(), kColumnSortKeys.end(), first.key);
    m_table->header()->setSortIndicator(static_cast<int>(found - kColumnSortKeys.begin()),
                                        first.order == PluginSortDirection::forward ? Qt::AscendingOrder
                                                                                    : Qt::DescendingOrder);
}

void PluginListView::renderFooter()
{
    m_shown->setText(u"Showing %1 of %2 plugins"_s.arg(m_viewModel.filteredPlugins().size())
                         .arg(*m_viewModel.totalPluginCount));
    const bool hasMore = m_viewModel.hasMorePages();
    m_spinner->setVisible(hasMore);
    m_loadAll->setVisible(hasMore);
    m_hint->setVisible(!hasMore && *m_viewModel.totalPluginCount >= kHintCount);
}

void PluginListView::sortBy(int column)
{
    const PluginSortKey key = kColumnSortKeys[static_cast<std::size_t>(column)];
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

void PluginListView::loadMoreAtLastRow()
{
    if (isVisible() && m_table->showsLastRow())
        m_viewModel.loadMoreIfNeeded();
}

} // namespace orvanlite
