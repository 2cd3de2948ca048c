#pragma once

#include "model/Observable.h"
#include "records/ActivityLogEntry.h"

#include <vector>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

/// What the log keeps of a plugin.
struct LoggedPlugin {
    QString name;
    QString format; ///< raw value
};

/// The history of what the user did to plugins, newest first, kept in "activity_log.json". Only for the user
/// to look at: nothing decides by it.
///
/// Errors:  a missing, unreadable or invalid file reads as empty; a failed write leaves the entries as they are.
/// Effects: every change assigns `entries` once and then rewrites the whole file.
class ActivityLogManager final {
public:
    static constexpr std::size_t kMaxEntries = 200;

    /// The one log of the process, read on first use.
    static ActivityLogManager& shared(const platform::Platform& platform);

    explicit ActivityLogManager(const platform::Platform& platform);
    ActivityLogManager(const ActivityLogManager&) = delete;
    ActivityLogManager& operator=(const ActivityLogManager&) = delete;

    /// Newest first. A longer list from the file is cut to the limit by the next call of log() or logBatch().
    Observable<std::vector<ActivityLogEntry>> entries;

    void log(const QString& plugin, const QString& format, ActivityAction action);
    /// One entry for each plugin in the order given, so that the first stands on top, all with one time and
    /// one write of the file.
    void logBatch(const std::vector<LoggedPlugin>& plugins, ActivityAction action);
    void clear();

private:
    /// Where the file lies; makes its folder.
    [[nodiscard]] QString saveUrl() const;
    [[nodiscard]] std::vector<ActivityLogEntry> load() const;
    void save() const;

    const platform::Platform& m_platform;
};

} // namespace orvanlite
