#pragma once

#include "helper/PluginFolderMonitor.h"
#include "platform/Platform.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <optional>

namespace orvanlite {

/// The menu-bar helper: shows the number of enabled plugins that the application publishes, and notifies the
/// user of new plugins.
class HelperAgent final : public QObject {
    Q_OBJECT

public:
    explicit HelperAgent(const platform::Platform& platform);

private:
    void createMenu();
    void showItem();
    void readCount();
    void showCount();
    void openApplication();
    void notifyUser(const std::vector<FoundPlugin>& plugins);
    /// The application bundle that contains this agent; empty when it is located elsewhere.
    [[nodiscard]] QString applicationPath() const;
    [[nodiscard]] bool applicationRuns() const;

    platform::Platform m_platform;
    PluginFolderMonitor m_monitor;
    std::optional<int> m_count;
    QMenu m_menu;
    QAction* m_countLine;
    QAction* m_openApplication;
    std::unique_ptr<QSystemTrayIcon> m_item; ///< null until the status area is ready
};

} // namespace orvanlite
