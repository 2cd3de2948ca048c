#pragma once

#include "platform/Platform.h"

namespace orvanlite {

/// Controls the menu bar helper: its start at login, and starting and terminating it now. The helper is a
/// separate process that keeps running after the application has quit.
class MenuBarLoginItem final {
public:
    explicit MenuBarLoginItem(const platform::Platform& platform)
        : m_platform(platform)
    {}
    MenuBarLoginItem(const MenuBarLoginItem&) = delete;
    MenuBarLoginItem& operator=(const MenuBarLoginItem&) = delete;

    /// Whether the system starts the helper at login. Queries the system at each call.
    [[nodiscard]] bool isEnabled() const;

    /// Registers the helper for login and starts it, or unregisters and terminates it.
    /// Errors: a line on standard output; then nothing is started or terminated.
    void setEnabled(bool enabled);

    /// Unless the helper of this application's bundle is the only one running, terminates all running helpers
    /// and starts it after half a second. Does nothing if the bundle contains no helper.
    void launchHelperNow();

    /// Terminates all running helpers, including those of other bundles.
    void terminateHelper();

private:
    [[nodiscard]] QString helperPath() const;

    platform::Platform m_platform;
};

} // namespace orvanlite
