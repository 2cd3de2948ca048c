#pragma once

#include "platform/Platform.h"

namespace orvanlite {

/// The application's hold on its helper in the menu bar: whether the system starts it at login, and starting and ending
/// it now. The helper is a process of its own, which goes on when the application has ended.
class MenuBarLoginItem final {
public:
    explicit MenuBarLoginItem(const platform::Platform& platform)
        : m_platform(platform)
    {}
    MenuBarLoginItem(const MenuBarLoginItem&) = delete;
    MenuBarLoginItem& operator=(const MenuBarLoginItem&) = delete;

    /// Whether the system starts the helper at login. Asked of the system every time.
    [[nodiscard]] bool isEnabled() const;

    /// Registers the helper for login and starts it, or takes it back and ends it.
    /// Errors: a line on standard output; nothing is started or ended then.
    void setEnabled(bool enabled);

    /// Starts the helper of this application's bundle after half a second, unless it is the one helper that runs.
    /// Every other one is ended at once. Nothing happens where the bundle holds no helper.
    void launchHelperNow();

    /// Ends every running helper, wherever it lies.
    void terminateHelper();

private:
    [[nodiscard]] QString helperPath() const;

    platform::Platform m_platform;
};

} // namespace orvanlite
