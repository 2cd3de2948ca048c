#pragma once

#include "catalogue/Connection.h"
#include "catalogue/PluginFilter.h"
#include "model/AudioPlugin.h"

#include <QSet>
#include <QStringList>

#include <chrono>

namespace orvanlite::platform {
class FileManager;
struct Platform;
} // namespace orvanlite::platform

namespace orvanlite {

class Statement;

/// The catalogue: the result of the last scan in one SQLite file. A cache of the file system: a scan replaces
/// its whole content, single operations patch it, and nothing is lost with the file.
///
/// Errors: none leave it. A line ("❌ ...") is printed when the file cannot be opened or its tables cannot be
///         created, and when replaceAllPlugins() cannot begin, clear the table or commit. Every other
///         statement is silent: one that cannot be prepared or run changes nothing, or ends its list of rows.
///         A damaged file, or one with another table, is set aside by the next replaceAllPlugins().
class PluginDatabase final {
public:
    /// The catalogue of this process, opened on first use and never closed.
    static PluginDatabase& shared(const platform::Platform& platform);

    /// How long each statement waits for another process's lock.
    static constexpr std::chrono::milliseconds kPatience{5'000};

    /// Opens or creates the file and its folder.
    PluginDatabase(const platform::Platform& platform, QString dbPath,
                   std::chrono::milliseconds patience = kPatience);
    PluginDatabase(const PluginDatabase&) = delete;
    PluginDatabase& operator=(const PluginDatabase&) = delete;

    [[nodiscard]] const QString& dbPath() const { return m_dbPath; }

    /// Replaces all rows in one transaction. Keeps the old rows if another process holds the write lock for
    /// longer than the timeout.
    /// Effects: a file that turned out to be damaged is renamed to "plugins.db.damaged" (with its "-wal" and
    ///          "-shm"), in place of an earlier one, and the rows go to a new file.
    void replaceAllPlugins(const AudioPlugins& plugins);
    /// Writes the current path and state of one row; no effect when no row has the id.
    void updatePlugin(const AudioPlugin& plugin);
    void deletePlugin(const QUuid& id);
    /// The same for many rows: on purpose one statement per row, without a transaction. They wait only once
    /// for another process's lock.
    void updatePlugins(const AudioPlugins& plugins);
    void deletePlugins(const AudioPlugins& plugins);
    /// Whether a change has been lost on a full disk: the rows disagree with the plugin folders until
    /// replaceAllPlugins() succeeds.
    [[nodiscard]] bool isOutOfSpace() const { return m_connection.isOutOfSpace(); }

    /// Increases with every change made through this object. Equal revisions: the same rows.
    [[nodiscard]] quint64 revision() const { return m_revision; }

    /// One page, without damaged rows. `sortColumn` is inserted into the SQL text: it must be a column name
    /// and never user input.
    [[nodiscard]] AudioPlugins queryPlugins(const PluginFilter& filter, QLatin1StringView sortColumn,
                                            bool sortAscending, int limit, int offset) const;
    [[nodiscard]] int totalCount(const PluginFilter& filter) const;
    /// All matching ids; ignores the filter's `pluginKeys`.
    [[nodiscard]] QSet<QUuid> getAllFilteredPluginIds(const PluginFilter& filter) const;
    [[nodiscard]] QSet<QString> getAllPluginKeys() const;
    /// Without the empty text; case-insensitively distinct.
    [[nodiscard]] QStringList getDistinctManufacturers() const;
    /// In row order, not in the order of the ids. An empty set runs no query.
    [[nodiscard]] AudioPlugins getPluginsByIds(const QSet<QUuid>& ids) const;
    /// Number of rows in the given state; 0 when the query fails.
    [[nodiscard]] int countPlugins(bool enabled) const;

private:
    void openDatabase();
    /// Returns SQLite's result code.
    int exec(const char* sql);
    [[nodiscard]] bool hasOtherTable() const;
    void replaceRows(const AudioPlugins& plugins);
    bool startNewFile();
    static std::optional<AudioPlugin> pluginFromRow(const Statement& statement);

    platform::FileManager& m_files;
    const QString m_dbPath;
    const std::chrono::milliseconds m_patience;
    mutable Connection m_connection; ///< notes the faults of queries too
    quint64 m_revision = 1;
};

} // namespace orvanlite
