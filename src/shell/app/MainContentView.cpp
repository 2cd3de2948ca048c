#include "shell/app/MainContentView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "records/PDFExporter.h"
#include "shell/app/DragHandle.h"
#include "shell/bulk/BulkActionsView.h"
#include "shell/sheets/ExportPicker.h"
#include "shell/table/EmptyStateView.h"
#include "shell/table/PluginListView.h"
#include "shell/table/PreviewStrip.h"
#include "shell/table/SearchBar.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Divider.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QStackedWidget>

#include <algorithm>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kToolSpacing = 10;
constexpr int kDividerHeight = 16;
constexpr double kSmallestPane = 80;
constexpr double kLargestPane = 500;

} // namespace

MainContentView::MainContentView(const Services& services, BulkConfirmation& confirmation,
                                 std::function<void()> onResetTapped, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_viewModel(services.plugins)
    , m_onResetTapped(std::move(onResetTapped))
    , m_body(new QStackedWidget(this))
    , m_emptyState(new EmptyStateView(m_viewModel, m_body))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"mainContentView"_s);
    m_body->setAccessibleName(u"Content"_s);
    auto* toolRow = new QWidget(this);
    buildToolRow(toolRow);
    m_preview = new PreviewStrip(m_viewModel, this); // before the table in tab order
    connect(m_preview, &PreviewStrip::closeClicked, this, [this] { m_viewModel.closeProfilePreview(); });
    auto* tables = new QWidget(m_body);
    m_list = new PluginListView(m_viewModel, services.platform, tables);
    m_handle = new DragHandle(tables);
    m_bulkActions = new BulkActionsView(m_viewModel, confirmation, tables);
    m_bulkActions->setPaneHeight(m_bulkPaneHeight);
    connect(m_handle, &DragHandle::dragged, this, &MainContentView::resizeBulkPane);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(toolRow);
    column->addWidget(m_preview);
    column->addWidget(m_body, 1);
    auto* tableColumn = new QVBoxLayout(tables);
    tableColumn->setContentsMargins(0, 0, 0, 0);
    tableColumn->setSpacing(0);
    tableColumn->addWidget(m_list, 1);
    tableColumn->addWidget(m_handle);
    tableColumn->addWidget(m_bulkActions);
    m_body->addWidget(m_emptyState);
    m_body->addWidget(tables);

    // `persistedSelections` is not observable; these values change whenever it does.
    m_updates->watch(m_viewModel.selectedPlugins, m_viewModel.consolidatedBulkPlugins,
                     m_viewModel.displayedPlugins, m_viewModel.showAllPlugins, m_viewModel.activeProfile);
    render();
}

PressButton* MainContentView::addToolButton(QHBoxLayout* row, const QString& text, const QString& iconKey)
{
    auto* button = new PressButton(text, iconKey, PressButton::Ground::none, row->parentWidget());
    button->setObjectName(text.toLower() + u"Button"_s);
    row->addWidget(button);
    return button;
}

void MainContentView::buildToolRow(QWidget* row)
{
    row->setObjectName(u"toolRow"_s);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace3, AppTheme::kSpace5, AppTheme::kSpace3);
    layout->setSpacing(kToolSpacing);
    layout->addWidget(new SearchBar(m_viewModel.searchText, row), 1);
    QWidget* divider = makeDivider(row);
    divider->setFixedSize(1, kDividerHeight);
    layout->addWidget(divider);
    m_reset = addToolButton(layout, u"Reset"_s, u"arrow.counterclockwise"_s);
    m_reset->setTextColour(&AppTheme::secondary);
    connect(m_reset, &QAbstractButton::clicked, this, &MainContentView::reset);
    PressButton* scan = addToolButton(layout, u"Scan"_s, {});
    connect(scan, &QAbstractButton::clicked, this, [this] {
        if (!*m_viewModel.isRunningScript)
            detach(m_viewModel.scanForPlugins());
    });
    PressButton* exportButton = addToolButton(layout, u"Export"_s, {});
    connect(exportButton, &QAbstractButton::clicked, this, &MainContentView::showExportPicker);
    for (PressButton* action : {scan, exportButton}) {
        action->setTextColour([](const QPalette&) { return AppTheme::actionText(); });
        // Compensates for the low contrast of the colour on a light background.
        setRelativeFont(action, 1, QFont::DemiBold);
    }
}

void MainContentView::reset()
{
    // On purpose twice, here and in the callback: the reset does not depend on the callback.
    m_viewModel.resetView();
    m_onResetTapped();
    m_list->startOver();
}

void MainContentView::showExportPicker()
{
    auto* picker = new ExportPicker(m_exportFormat, m_exportSortOption, window());
    picker->setAttribute(Qt::WA_DeleteOnClose);
    connect(picker, &QDialog::accepted, this, &MainContentView::exportPlugins);
    picker->present();
}

void MainContentView::exportPlugins()
{
    // On purpose all plugins, regardless of search, filters and selection.
    PDFExporter::exportPlugins(*m_viewModel.plugins, m_exportFormat, m_exportSortOption, m_services.savePanel,
                               m_services.platform);
}

void MainContentView::render()
{
    const bool hasPreview = m_viewModel.activeProfile->has_value();
    const bool hasSelection = !hasPreview && !m_viewModel.persistedSelections.isEmpty();
    const bool showsTable = *m_viewModel.showAllPlugins || hasSelection;
    const QWidget* focus = QApplication::focusWidget();
    const auto holdsFocus = [focus](const QWidget* view) {
        return focus && (focus == view || view->isAncestorOf(focus));
    };
    // Move the focus before its view is hidden.
    if (!hasPreview && holdsFocus(m_preview))
        m_reset->setFocus();
    if (!showsTable && holdsFocus(m_body))
        m_reset->setFocus();
    else if (!hasSelection && (holdsFocus(m_handle) || holdsFocus(m_bulkActions)))
        m_list->focusTable();
    m_preview->setVisible(hasPreview);
    m_handle->setVisible(hasSelection);
    m_bulkActions->setVisible(hasSelection);
    m_body->setCurrentIndex(showsTable ? 1 : 0);
}

void MainContentView::resizeBulkPane(double translation)
{
    // On purpose: the translation counts from the start of the drag but is applied to the height already
    // changed, so the pane moves faster than the pointer.
    m_bulkPaneHeight = std::clamp(m_bulkPaneHeight - translation, kSmallestPane, kLargestPane);
    m_bulkActions->setPaneHeight(m_bulkPaneHeight);
}

} // namespace orvanlite
