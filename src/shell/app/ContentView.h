#pragma once

#include "model/Observable.h"
#include "shell/toolkit/Services.h"

#include <QWidget>

#include <memory>

namespace orvanlite::platform {
class FullDiskAccess;
} // namespace orvanlite::platform

namespace orvanlite {

class CheatCode;
class InputGate;
class NewPluginsWorkflow;
class SidebarSplitter;
class UADCleanupManager;
class UADCleanupSheet;
class UpdateChecker;
class ViewUpdater;
struct BulkConfirmation;
struct SharedObjects;

/// The root view of the main window. It owns the view model, starts the first scan after the first paint and
/// shows the application-wide dialogs.
class ContentView final : public QWidget {
    Q_OBJECT

public:
    ContentView(const platform::Platform& platform, const SharedObjects& shared, QWidget* parent = nullptr);
    ~ContentView() override;

    [[nodiscard]] PluginManagerViewModel& pluginManager() { return *m_pluginManager; }
    [[nodiscard]] BulkConfirmation& bulkConfirmation() { return *m_bulkConfirmation; }
    [[nodiscard]] ProfileManager& profileManager() { return *m_profileManager; }
    [[nodiscard]] CheatCode& cheatCode() { return *m_cheatCode; }

    /// Shows the "Error" alert with the view model's last failure. On purpose never set automatically: a
    /// failed operation shows in the plugins it did not change, and does not interrupt the user.
    Observable<bool> showingError{false};

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// The banners above the main pane.
    [[nodiscard]] QWidget* makeDetailColumn();
    [[nodiscard]] SidebarSplitter* makeColumns();
    void appear();
    void showBulkWarning();
    void showErrorAlert();
    /// The hidden key sequence has been typed.
    void startCleanup();
    QWidget* showOnboarding();
    void showCleanupSheet();

    void render();

    std::unique_ptr<PluginManagerViewModel> m_pluginManager;
    std::unique_ptr<ProfileManager> m_profileManager;
    std::unique_ptr<SavePanel> m_savePanel;
    std::unique_ptr<OpenPanel> m_openPanel;
    const Services m_services;
    UADCleanupManager& m_uadCleanup;
    UpdateChecker& m_updateChecker;
    platform::FullDiskAccess& m_diskAccess;
    const bool m_showingOnboarding; ///< value at construction
    std::unique_ptr<BulkConfirmation> m_bulkConfirmation;
    std::unique_ptr<InputGate> m_inputGate;
    CheatCode* m_cheatCode;
    NewPluginsWorkflow* m_newPlugins = nullptr;
    SidebarSplitter* m_columns;
    UADCleanupSheet* m_cleanupSheet;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
