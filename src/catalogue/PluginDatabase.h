#pragma once

#include "catalogue/PluginFilter.h"
#include "model/AudioPlugin.h"

#include <QSet>
#include <QStringList>

#include <chrono>

struct sqlite3;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class Statement;

/// The catalogue: the result of the last scan in one SQLite file. A cache of the file system: a scan replaces its
/// whole content, single operations patch it, and nothing is lost with the file.
///
/// Errors: none leave it. A line ("❌ ...") is printed when the file cannot be opened or its tables cannot be
///         created, and when replaceAllPlugins() cannot begin, clear the table or commit. Every other statement is
///         silent: one that cannot be prepared or run changes nothing, or ends its list of rows.
class PluginDatabase final {
public:
    /// The one catalogue of the process, opened on first use and never closed.
    static PluginDatabase& shared(const platform::Platform& platform);

    /// How long each statement waits for the lock of another process.
    static constexpr std::chrono::milliseconds kPatience{5'000};

    /// Opens or creates the file and its folder.
    PluginDatabase(const platform::Platform& platform, QString dbPath,
                   std::chrono::milliseconds patience = kPatience);
    PluginDatabase(const PluginDatabase&) = delete;
    PluginDatabase& operator=(const PluginDatabase&) = delete;
    ~PluginDatabase();

    [[nodiscard]] const QString& dbPath() const { return m_dbPath; }

    /// Replaces all rows, in one transaction with one statement. Keeps all of them while another process holds the
    /// write lock for longer than we wait.
    void replaceAllPlugins(const AudioPlugins& plugins);
    /// Writes the current path and the state of one row; nothing when no row has the id.
    void updatePlugin(const AudioPlugin& plugin);
    void deletePlugin(const QUuid& id);

    /// One page. Damaged rows are left out. `sortColumn` goes into the statement as it is: it must be a column's
    /// name and never come from the user.
    [[nodiscard]] AudioPlugins queryPlugins(const PluginFilter& filter, QLatin1StringView sortColumn,
                                            bool sortAscending, int limit, int offset) const;
    [[nodiscard]] int totalCount(const PluginFilter& filter) const;
    /// All ids that match; the keys of the filter play no part.
    [[nodiscard]] QSet<QUuid> getAllFilteredPluginIds(const PluginFilter& filter) const;
    [[nodiscard]] QSet<QString> getAllPluginKeys() const;
    /// Without the empty text; spellings that differ only in case are one.
    [[nodiscard]] QStringList getDistinctManufacturers() const;
    /// In row order, which is not the order of the ids. An empty set asks nothing.
    [[nodiscard]] AudioPlugins getPluginsByIds(const QSet<QUuid>& ids) const;
    /// Rows in the state; 0 when they cannot be counted.
    [[nodiscard]] int countPlugins(bool enabled) const;

private:
    void openDatabase(std::chrono::milliseconds patience);
    bool exec(const char* sql);
    static std::optional<AudioPlugin> pluginFromRow(const Statement& statement);

    QString m_dbPath;
    sqlite3* m_db = nullptr;
};

} // namespace orvanlite
