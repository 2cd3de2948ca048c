#include "shell/app/ContentView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Defaults.h"
#include "platform/Platform.h"
#include "profiles/ProfileManager.h"
#include "shell/app/CheatCode.h"
#include "shell/app/FirstPaint.h"
#include "shell/app/InputGate.h"
#include "shell/app/MainContentView.h"
#include "shell/app/SharedObjects.h"
#include "shell/app/SpokenChanges.h"
#include "shell/bulk/BulkConfirmation.h"
#include "shell/bulk/BulkOperations.h"
#include "shell/onboarding/OnboardingView.h"
#include "shell/sheets/NewPluginsWorkflow.h"
#include "shell/sheets/UADCleanupSheet.h"
#include "shell/sidebar/SidebarSplitter.h"
#include "shell/sidebar/SidebarView.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Banner.h"
#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/FileOpenPanel.h"
#include "shell/toolkit/FileSavePanel.h"
#include "shell/toolkit/ViewUpdater.h"
#include "shell/updates/UpdateBanner.h"
#include "shell/updates/UpdateChecker.h"
#include "uad/UADCleanupManager.h"

#include <QApplication>
#include <QDialog>
#include <QPainter>
#include <QPointer>
#include <QVBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

QString bulkWarningTitle(const BulkConfirmation& confirmation)
{
    return confirmation.pendingAction == BulkAction::delete_ ? u"⚠️ Permanently Delete Plugins"_s
                                                             : u"Confirm Bulk Action"_s;
}

QString bulkWarningMessage(const BulkConfirmation& confirmation)
{
    if (!confirmation.pendingAction)
        return {};
    const auto count = confirmation.pendingPlugins.size();
    if (confirmation.pendingAction == BulkAction::delete_) {
        return u"You are about to permanently delete %1 plugin(s) from your system. This action CANNOT be undone. "
               "The plugin(s) will need to be reinstalled."_s.arg(count);
    }
    const QString verb = confirmation.pendingAction == BulkAction::disable ? u"disable"_s : u"enable"_s;
    return u"You are about to %1 %2 plugins. Are you sure you want to continue?"_s.arg(verb).arg(count);
}

/// Only the first scan offers to review new plugins.
QCoro::Task<> scanAtStart(PluginManagerViewModel* viewModel, QPointer<NewPluginsWorkflow> newPlugins)
{
    co_await viewModel->scanForPlugins();
    if (newPlugins)
        newPlugins->scanEnded();
}

} // namespace

ContentView::ContentView(const platform::Platform& platform, const SharedObjects& shared, QWidget* parent)
    : QWidget(parent)
    , m_pluginManager(std::make_unique<PluginManagerViewModel>(platform, shared.database, shared.activityLog))
    , m_profileManager(std::make_unique<ProfileManager>(platform))
    , m_savePanel(std::make_unique<FileSavePanel>(*this, platform.layout.documents))
    , m_openPanel(std::make_unique<FileOpenPanel>(*this, platform.layout.documents))
    , m_services{platform,           *m_pluginManager, *m_profileManager,
                 shared.activityLog, *m_savePanel,     *m_openPanel}
    , m_uadCleanup(shared.uadCleanup)
    , m_updateChecker(shared.updateChecker)
    , m_diskAccess(shared.fullDiskAccess)
    , m_showingOnboarding(!platform.defaults.standard().value(u"onboardingComplete"_s).toBool())
    , m_bulkConfirmation(std::make_unique<BulkConfirmation>())
    , m_inputGate(std::make_unique<InputGate>(m_pluginManager->isRunningScript))
    , m_cheatCode(new CheatCode(
          platform.clock, [this] { startCleanup(); }, this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"contentView"_s);
    m_pluginManager->setBatchProgress(&shared.batchProgress);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    m_columns = makeColumns();
    column->addWidget(m_columns);
    m_bulkConfirmation->isShowing.observe(this, [this] {
        if (*m_bulkConfirmation->isShowing)
            showBulkWarning();
    });
    showingError.observe(this, [this] {
        if (*showingError)
            showErrorAlert();
    });
    m_updates->watch(m_pluginManager->selectedFormats);
    // So that the window is visible before a scan occupies the thread.
    new FirstPaint(this, this, [this] { appear(); });
    new SpokenChanges(*m_pluginManager, shared.activityLog, this);
    m_cleanupSheet = new UADCleanupSheet(m_uadCleanup, this);
    m_uadCleanup.pluginManager = m_pluginManager.get();
    m_uadCleanup.showCleanupSheet.observe(this, [this] { showCleanupSheet(); });
}

SidebarSplitter* ContentView::makeColumns()
{
    const auto act = [viewModel = m_pluginManager.get()](BulkAction action,
                                                         std::optional<PluginFormat> format) {
        detach(action == BulkAction::enable ? enableAllForFormat(viewModel, format)
                                            : disableAllForFormat(viewModel, format));
    };
    auto* sidebar = new SidebarView(m_services, act, this); // before the detail column in tab order
    return new SidebarSplitter(sidebar, makeDetailColumn(), this);
}

QWidget* ContentView::makeDetailColumn()
{
    auto* detail = new QWidget(this);
    // Creation order is tab order.
    Banner* updateBanner =
        makeUpdateBanner(m_updateChecker, m_services.platform, &QApplication::quit, detail);
    m_newPlugins = new NewPluginsWorkflow(*m_pluginManager, *m_profileManager, detail);
    auto* mainContent = new MainContentView(
        m_services, *m_bulkConfirmation,
        [this] {
            m_pluginManager->resetView();
            m_cheatCode->armCheatCode();
        },
        detail);
    auto* column = new QVBoxLayout(detail);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(updateBanner);
    column->addWidget(m_newPlugins->banner());
    column->addWidget(mainContent, 1);
    return detail;
}

ContentView::~ContentView()
{
    // The views access the view model until they are destroyed.
    delete m_columns;
}

void ContentView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QLinearGradient gradient(rect().topLeft(), rect().bottomRight());
    gradient.setColorAt(0, AppTheme::withOpacity(AppTheme::primary(palette()), 0.05));
    gradient.setColorAt(1, AppTheme::withOpacity(AppTheme::primary(palette()), 0.02));
    painter.fillRect(rect(), gradient);
}

void ContentView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    render();
}

void ContentView::render()
{
    const QSet<PluginFormat>& formats = *m_pluginManager->selectedFormats;
    window()->setWindowTitle(formats.size() == 1 ? rawValue(*formats.begin()) : u"All Plugins"_s);
}

void ContentView::appear()
{
    detach(m_updateChecker.checkForUpdates());
    const auto scan = [this] { detach(scanAtStart(m_pluginManager.get(), m_newPlugins)); };
    if (m_showingOnboarding)
        new FirstPaint(showOnboarding(), this, scan);
    else
        scan();
}

QWidget* ContentView::showOnboarding()
{
    auto* sheet = new OnboardingView(m_services.platform, m_diskAccess, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    // Counts as completed however it is closed.
    connect(sheet, &QDialog::finished, this,
            [this] { m_services.platform.defaults.standard().setValue(u"onboardingComplete"_s, true); });
    sheet->open();
    return sheet;
}

void ContentView::startCleanup()
{
    m_uadCleanup.pluginManager = m_pluginManager.get();
    m_uadCleanup.startCleanup();
}

void ContentView::showCleanupSheet()
{
    if (*m_uadCleanup.showCleanupSheet)
        m_cleanupSheet->open();
    else
        m_cleanupSheet->close();
}

void ContentView::showBulkWarning()
{
    const bool deletes = m_bulkConfirmation->pendingAction == BulkAction::delete_;
    const Question question{u"bulkWarning"_s, bulkWarningTitle(*m_bulkConfirmation),
                            bulkWarningMessage(*m_bulkConfirmation),
                            deletes ? u"Delete Permanently"_s : u"Continue"_s, true};
    // Acts only on the plugins listed when the question was asked, even if the selection changes meanwhile.
    QDialog* warning =
        ask(this, question,
            [this, action = m_bulkConfirmation->pendingAction.value_or(BulkAction::enable),
             plugins = m_bulkConfirmation->pendingPlugins] {
                detach(performBulkAction(m_pluginManager.get(), m_bulkConfirmation.get(), action, plugins));
            });
    connect(warning, &QDialog::finished, this, [this] { m_bulkConfirmation->isShowing = false; });
}

void ContentView::showErrorAlert()
{
    const std::optional<PluginError>& error = *m_pluginManager->error;
    QDialog* alert =
        tell(this, Tone::warning, u"errorAlert"_s, u"Error"_s, error ? error->errorDescription() : QString());
    connect(alert, &QDialog::finished, this, [this] { showingError = false; });
}

} // namespace orvanlite
