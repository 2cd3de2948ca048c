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

/// What the larger views of the main window need. The root view builds it; they pass on only what a part of them needs.
struct Services {
    const platform::Platform& platform;
    PluginManagerViewModel& plugins;
    ProfileManager& profiles;
    ActivityLogManager& activityLog;
    SavePanel& savePanel;
    OpenPanel& openPanel;
};

} // namespace orvanlite
