#include "shell/MainContentView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Appearance.h"
#include "platform/Platform.h"
#include "shell/AppTheme.h"
#include "shell/BulkActionsView.h"
#include "shell/DragHandle.h"
#include "shell/PluginListView.h"
#include "shell/PressButton.h"
#include "shell/SearchBar.h"
#include "shell/ViewUpdater.h"

#include <QApplication>
#include <QHBoxLayout>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kToolSpacing = 10;
constexpr int kDividerHeight = 16;
constexpr double kSmallestPane = 80;
constexpr double kLargestPane = 500;

QWidget* makeDivider(QWidget* parent)
{
    auto* line = new QWidget(parent);
    line->setFixedSize(1, kDividerHeight);
    line->setBackgroundRole(QPalette::Mid);
    line->setAutoFillBackground(true);
    return line;
}

} // namespace

MainContentView::MainContentView(PluginManagerViewModel& viewModel, BulkConfirmation& confirmation,
                                 const platform::Platform& platform, QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"mainContentView"_s);
    auto* toolRow = new QWidget(this);
    buildToolRow(toolRow, platform);
    m_list = new PluginListView(viewModel, platform, this);
    m_handle = new DragHandle(this);
    m_bulkActions = new BulkActionsView(viewModel, confirmation, platform, this);
    m_bulkActions->setPaneHeight(m_bulkPaneHeight);
    connect(m_handle, &DragHandle::dragged, this, &MainContentView::resizeBulkPane);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(toolRow);
    column->addWidget(m_list, 1);
    column->addWidget(m_handle);
    column->addWidget(m_bulkActions);

    // The selection itself tells nobody of its changes; these do, each time that it has changed.
    m_updates->watch(viewModel.selectedPlugins, viewModel.consolidatedBulkPlugins,
                     viewModel.displayedPlugins);
    render();
}

void MainContentView::buildToolRow(QWidget* row, const platform::Platform& platform)
{
    row->setObjectName(u"toolRow"_s);
    const bool reducesMotion = platform.appearance.reducesMotion();
    auto* search = new SearchBar(m_viewModel.searchText, row);
    m_scan = new PressButton(u"Scan"_s, {}, PressButton::Ground::none, row);
    m_scan->setObjectName(u"scanButton"_s);
    m_scan->setTextColour(AppTheme::actionText());
    m_scan->setReducesMotion(reducesMotion);
    QFont bold = m_scan->font();
    bold.setWeight(QFont::DemiBold); // helps a colour that is weak on a light ground
    m_scan->setFont(bold);
    connect(m_scan, &QAbstractButton::clicked, this, [this] {
        if (!*m_viewModel.isRunningScript)
            detach(m_viewModel.scanForPlugins());
    });

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace3, AppTheme::kSpace5, AppTheme::kSpace3);
    layout->setSpacing(kToolSpacing);
    layout->addWidget(search, 1);
    layout->addWidget(makeDivider(row));
    layout->addWidget(m_scan);
}

void MainContentView::render()
{
    const bool hasSelection = !m_viewModel.persistedSelections.isEmpty();
    const QWidget* focus = QApplication::focusWidget();
    if (!hasSelection && focus && (focus == m_handle || m_bulkActions->isAncestorOf(focus)))
        m_list->focusTable(); // before the pane goes with it
    m_handle->setVisible(hasSelection);
    m_bulkActions->setVisible(hasSelection);
}

void MainContentView::resizeBulkPane(double translation)
{
    // On purpose: the way counts from the start of the drag while the height is the changed one already, so that the
    // pane runs ahead of the pointer.
    m_bulkPaneHeight = std::clamp(m_bulkPaneHeight - translation, kSmallestPane, kLargestPane);
    m_bulkActions->setPaneHeight(m_bulkPaneHeight);
}

} // namespace orvanlite
