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

    /// To be called once, when the event loop runs.
    void applicationDidFinishLaunching();

    /// Shows the window over all others, also when it is minimised or hidden. A sheet that is open gets the focus.
    void bringToFront();

    /// Asks for a newer version. If there is one the banner says so, otherwise an alert says that there is none.
    void checkForUpdates();
    /// Starts the clean-up of UAD demos. On purpose no menu entry is bound to it.
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
