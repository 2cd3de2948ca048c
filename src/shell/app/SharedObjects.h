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

/// Per-process singletons, passed to the root view. Tests pass their own instances.
struct SharedObjects {
    PluginDatabase& database;
    ActivityLogManager& activityLog;
    BatchProgress& batchProgress;
    UADCleanupManager& uadCleanup;
    UpdateChecker& updateChecker;
    platform::FullDiskAccess& fullDiskAccess;
};

} // namespace orvanlite
