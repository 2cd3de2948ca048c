#include "shell/ContentView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "shell/AppTheme.h"
#include "shell/BulkConfirmation.h"
#include "shell/BulkOperations.h"
#include "shell/InputGate.h"
#include "shell/MainContentView.h"
#include "shell/SharedObjects.h"

#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
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

} // namespace

ContentView::ContentView(const platform::Platform& platform, const SharedObjects& shared, QWidget* parent)
    : QWidget(parent)
    , m_pluginManager(std::make_unique<PluginManagerViewModel>(platform, shared.database, shared.activityLog))
    , m_bulkConfirmation(std::make_unique<BulkConfirmation>())
    , m_inputGate(std::make_unique<InputGate>(m_pluginManager->isRunningScript))
    , m_mainContent(new MainContentView(*m_pluginManager, *m_bulkConfirmation, platform, this))
{
    setObjectName(u"contentView"_s);
    m_pluginManager->setBatchProgress(&shared.batchProgress);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_mainContent);
    m_bulkConfirmation->isShowing.observe(this, [this] {
        if (*m_bulkConfirmation->isShowing)
            showBulkWarning();
    });
}

ContentView::~ContentView()
{
    // The views read the view model until they are gone.
    delete m_mainContent;
}

void ContentView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QLinearGradient gradient(rect().topLeft(), rect().bottomRight());
    gradient.setColorAt(0, AppTheme::withOpacity(AppTheme::primary(palette()), 0.05));
    gradient.setColorAt(1, AppTheme::withOpacity(AppTheme::primary(palette()), 0.02));
    painter.fillRect(rect(), gradient);
    if (!std::exchange(m_hasAppeared, true)) {
        // Behind the first paint, so that the window stands before a scan takes the thread.
        QTimer::singleShot(0, this, &ContentView::appear);
    }
}

void ContentView::appear() { detach(m_pluginManager->scanForPlugins()); }

void ContentView::showBulkWarning()
{
    const bool deletes = m_bulkConfirmation->pendingAction == BulkAction::delete_;
    auto* warning = new QMessageBox(QMessageBox::Warning, bulkWarningTitle(*m_bulkConfirmation),
                                    bulkWarningMessage(*m_bulkConfirmation), QMessageBox::Cancel, window());
    warning->setObjectName(u"bulkWarning"_s);
    warning->setAttribute(Qt::WA_DeleteOnClose);
    warning->setWindowModality(Qt::WindowModal);
    QPushButton* go =
        warning->addButton(deletes ? u"Delete Permanently"_s : u"Continue"_s, QMessageBox::DestructiveRole);
    go->setObjectName(u"confirmBulkButton"_s);
    warning->button(QMessageBox::Cancel)->setObjectName(u"cancelBulkButton"_s);
    warning->setEscapeButton(QMessageBox::Cancel);
    warning->setDefaultButton(QMessageBox::Cancel);
    // Only what was in the list when the question was asked, whatever is selected by the time of the answer.
    connect(go, &QAbstractButton::clicked, this,
            [this, action = m_bulkConfirmation->pendingAction.value_or(BulkAction::enable),
             plugins = m_bulkConfirmation->pendingPlugins] {
                detach(performBulkAction(m_pluginManager.get(), m_bulkConfirmation.get(), action, plugins));
            });
    connect(warning, &QDialog::finished, this, [this] { m_bulkConfirmation->isShowing = false; });
    warning->open();
}

} // namespace orvanlite
