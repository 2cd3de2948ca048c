#include "shell/MainContentView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Appearance.h"
#include "platform/Platform.h"
#include "shell/AppTheme.h"
#include "shell/PluginListView.h"
#include "shell/PressButton.h"
#include "shell/SearchBar.h"
#include "shell/Spinner.h"
#include "shell/ViewUpdater.h"

#include <QHBoxLayout>
#include <QLabel>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kToolSpacing = 10;
constexpr int kDividerHeight = 16;
constexpr int kBusySpinner = 14;

QWidget* makeDivider(QWidget* parent)
{
    auto* line = new QWidget(parent);
    line->setFixedSize(1, kDividerHeight);
    line->setBackgroundRole(QPalette::Mid);
    line->setAutoFillBackground(true);
    return line;
}

} // namespace

MainContentView::MainContentView(PluginManagerViewModel& viewModel, const platform::Platform& platform,
                                 QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"mainContentView"_s);
    auto* toolRow = new QWidget(this);
    buildToolRow(toolRow, platform);
    m_list = new PluginListView(viewModel, platform, this);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(toolRow);
    column->addWidget(m_list, 1);

    m_updates->watch(viewModel.isLoading);
    // A scan holds the event loop from its start to its end: what tells of it must be painted before.
    viewModel.isLoading.observe(this, [this] { showBusyState(); });
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
    connect(m_scan, &QAbstractButton::clicked, this, [this] { detach(m_viewModel.scanForPlugins()); });

    m_busy = new QWidget(row);
    auto* busyRow = new QHBoxLayout(m_busy);
    busyRow->setContentsMargins(0, 0, 0, 0);
    busyRow->setSpacing(AppTheme::kSpace2);
    auto* busyText = new QLabel(u"Scanning..."_s, m_busy);
    busyText->setObjectName(u"scanningLabel"_s);
    busyText->setForegroundRole(QPalette::PlaceholderText);
    busyRow->addWidget(new Spinner(kBusySpinner, reducesMotion, m_busy));
    busyRow->addWidget(busyText);

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace3, AppTheme::kSpace5, AppTheme::kSpace3);
    layout->setSpacing(kToolSpacing);
    layout->addWidget(search, 1);
    layout->addWidget(makeDivider(row));
    layout->addWidget(m_busy);
    layout->addWidget(m_scan);
}

void MainContentView::render() { m_busy->setVisible(*m_viewModel.isLoading); }

void MainContentView::showBusyState()
{
    if (!*m_viewModel.isLoading || !isVisible())
        return;
    m_updates->flush();
    layout()->activate();
    window()->repaint();
}

} // namespace orvanlite
