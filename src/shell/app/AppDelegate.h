#pragma once

#include "shell/app/SharedObjects.h"
#include "shell/toolkit/KeyRepeat.h"

#include <QObject>

#include <memory>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class MainWindow;
class ThemeController;

/// Starts the application: the launch notification, the menu and the window, which it owns.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    AppDelegate(const platform::Platform& platform, const SharedObjects& shared);
    ~AppDelegate() override;

    /// Call once, when the event loop is running.
    void applicationDidFinishLaunching();

    /// Brings the window to the front, even if minimised or hidden. An open sheet gets the focus.
    void bringToFront();

    /// Checks for updates. The banner shows an available one; otherwise an alert says that the app is up to
    /// date.
    void checkForUpdates();
    /// Starts the clean-up of UAD demos. On purpose not bound to a menu entry.
    void cleanUpUADDemos();

    /// Null until launch has finished.
    [[nodiscard]] MainWindow* window() const { return m_window.get(); }

private:
    void postLaunchNotification();
    void setApplicationIcon();

    const platform::Platform& m_platform;
    SharedObjects m_shared;
    std::unique_ptr<ThemeController> m_theme;
    KeyRepeat m_keyRepeat;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace orvanlite
