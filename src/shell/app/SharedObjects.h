#pragma once

namespace orvanlite::platform {
class FullDiskAccess;
}

namespace orvanlite {

class ActivityLogManager;
class BatchProgress;
class PluginDatabase;
class UADCleanupManager;
class UpdateChecker;

/// The objects of which a process has one, handed to the root view. In the application they are the shared ones,
/// in a test its own.
struct SharedObjects {
    PluginDatabase& database;
    ActivityLogManager& activityLog;
    BatchProgress& batchProgress;
    UADCleanupManager& uadCleanup;
    UpdateChecker& updateChecker;
    platform::FullDiskAccess& fullDiskAccess;
};

} // namespace orvanlite
