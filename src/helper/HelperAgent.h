#pragma once

#include "helper/PluginFolderMonitor.h"
#include "platform/Platform.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <optional>

namespace orvanlite {

/// The helper in the menu bar: shows how many plugins are on, as the application tells, and tells the user of new
/// ones.
class HelperAgent final : public QObject {
    Q_OBJECT

public:
    explicit HelperAgent(const platform::Platform& platform);

private:
    void makeMenu();
    void showItem();
    void readCount();
    void showCount();
    void openApplication();
    void tell(const std::vector<FoundPlugin>& plugins);
    /// The application that this agent lies in; empty for one that lies elsewhere.
    [[nodiscard]] QString applicationPath() const;
    [[nodiscard]] bool applicationRuns() const;

    platform::Platform m_platform;
    PluginFolderMonitor m_monitor;
    std::optional<int> m_count;
    QMenu m_menu;
    QAction* m_countLine;
    QAction* m_openApplication;
    std::unique_ptr<QSystemTrayIcon> m_item; ///< none as long as there is no place for it
};

} // namespace orvanlite
