#pragma once

#include "model/Observable.h"
#include "records/ActivityLogEntry.h"

#include <vector>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

/// The plugin data that the log stores.
struct LoggedPlugin {
    QString name;
    QString format; ///< raw value
};

/// The history of the user's actions on plugins, newest first, stored in "activity_log.json". For display
/// only: no logic depends on it.
///
/// Errors:  a missing, unreadable or invalid file reads as empty; a failed write keeps the entries in memory.
/// Effects: every change notifies once and then rewrites the whole file.
class ActivityLogManager final {
public:
    static constexpr std::size_t kMaxEntries = 200;

    /// The log of this process, loaded on first use.
    static ActivityLogManager& shared(const platform::Platform& platform);

    explicit ActivityLogManager(const platform::Platform& platform);
    ActivityLogManager(const ActivityLogManager&) = delete;
    ActivityLogManager& operator=(const ActivityLogManager&) = delete;

    /// Newest first. A longer list from the file is truncated by the next log() or logBatch().
    Observable<std::vector<ActivityLogEntry>> entries;

    void log(const QString& plugin, const QString& format, ActivityAction action);
    /// Adds one entry per plugin in the given order, the first one on top, with the same timestamp and a
    /// single write.
    void logBatch(const std::vector<LoggedPlugin>& plugins, ActivityAction action);
    void clear();

private:
    /// Path of the file. Creates its folder.
    [[nodiscard]] QString saveUrl() const;
    [[nodiscard]] std::vector<ActivityLogEntry> load() const;
    void save() const;

    const platform::Platform& m_platform;
};

} // namespace orvanlite
