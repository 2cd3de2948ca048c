#pragma once

#include <QObject>

#include <memory>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class ActivityLogManager;
class MainWindow;
class PluginDatabase;
class ThemeController;

/// Starts the application: the launch notification, the menu and the window, which it owns.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    AppDelegate(const platform::Platform& platform, PluginDatabase& database,
                ActivityLogManager& activityLog);
    ~AppDelegate() override;

    /// To be called once, when the event loop runs.
    void applicationDidFinishLaunching();

    /// Null until launch has finished.
    [[nodiscard]] MainWindow* window() const { return m_window.get(); }

private:
    void postLaunchNotification();
    void setApplicationIcon();

    const platform::Platform& m_platform;
    PluginDatabase& m_database;
    ActivityLogManager& m_activityLog;
    std::unique_ptr<ThemeController> m_theme;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace orvanlite
