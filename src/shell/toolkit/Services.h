#pragma once

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class ActivityLogManager;
class OpenPanel;
class PluginManagerViewModel;
class ProfileManager;
class SavePanel;

/// Dependencies of the larger views of the main window. Created by the root view; smaller views get only what
/// they need.
struct Services {
    const platform::Platform& platform;
    PluginManagerViewModel& plugins;
    ProfileManager& profiles;
    ActivityLogManager& activityLog;
    SavePanel& savePanel;
    OpenPanel& openPanel;
};

} // namespace orvanlite
