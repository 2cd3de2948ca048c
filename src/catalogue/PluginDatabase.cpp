#include "catalogue/PluginDatabase.h"

#include "catalogue/Statement.h"
#include "model/Console.h"
#include "model/Uuid.h"
#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/Platform.h"

#include <sqlite3.h>

#include <array>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Column order is part of the format: rows are read by column index, even after "SELECT *".
constexpr const char* kSchema = R"(CREATE TABLE IF NOT EXISTS plugins (
    id TEXT PRIMARY KEY,
    name TEXT NOT NULL COLLATE NOCASE,
    manufacturer TEXT NOT NULL COLLATE NOCASE,
    format TEXT NOT NULL,
    originalPath TEXT NOT NULL,
    currentPath TEXT NOT NULL,
    isEnabled INTEGER NOT NULL DEFAULT 1,
    version TEXT,
    bundleIdentifier TEXT,
    lastUsed REAL
);
CREATE INDEX IF NOT EXISTS idx_plugins_name ON plugins(name);
CREATE INDEX IF NOT EXISTS idx_plugins_manufacturer ON plugins(manufacturer);
CREATE INDEX IF NOT EXISTS idx_plugins_format ON plugins(format);
CREATE INDEX IF NOT EXISTS idx_plugins_isEnabled ON plugins(isEnabled);
CREATE INDEX IF NOT EXISTS idx_plugins_version ON plugins(version);
CREATE INDEX IF NOT EXISTS idx_plugins_lastUsed ON plugins(lastUsed);
)";

QString cataloguePath(const platform::SystemLayout& layout)
{
    if (layout.applicationSupport.isEmpty())
        qFatal("no application support folder");
    return layout.applicationFolder() + u"/plugins.db"_s;
}

/// Binds one record in column order and runs the statement. The bound texts live until it has run.
void insertPlugin(Statement& insert, const AudioPlugin& plugin)
{
    const QByteArray originalPath = plugin.originalPath.toUtf8();
    const bool isAtOriginalPath = plugin.currentPath == plugin.originalPath;
    const std::array texts{
        uuidBytes(plugin.id),
        plugin.name.toUtf8(),
        plugin.manufacturer.toUtf8(),
        rawValue(plugin.format).toUtf8(),
        originalPath,
        isAtOriginalPath ? originalPath : plugin.currentPath.toUtf8(),
    };
    int parameter = 1;
    for (const QByteArray& text : texts)
        insert.bindText(parameter++, text);
    insert.bindInteger(parameter++, plugin.isEnabled ? 1 : 0);
    // Absent texts are stored as empty ones, so that they sort first.
    const QByteArray version = plugin.version.value_or(QString()).toUtf8();
    const QByteArray bundleIdentifier = plugin.bundleIdentifier.value_or(QString()).toUtf8();
    insert.bindText(parameter++, version);
    insert.bindText(parameter++, bundleIdentifier);
    if (plugin.lastUsed)
        insert.bindReal(parameter, plugin.lastUsed->unixTime());
    else
        insert.bindNull(parameter);
    insert.step();
    insert.reset();
}

} // namespace

PluginDatabase& PluginDatabase::shared(const platform::Platform& platform)
{
    static auto* const database = new PluginDatabase(platform, cataloguePath(platform.layout));
    return *database;
}

PluginDatabase::PluginDatabase(const platform::Platform& platform, QString dbPath,
                               std::chrono::milliseconds patience)
    : m_dbPath(std::move(dbPath))
{
    if (const QString folder = platform::parentFolder(m_dbPath); !folder.isEmpty()) {
        try {
            platform.files.createDirectory(folder);
        } catch (const platform::FileError&) {
            // Opening the database fails and is reported.
        }
    }
    openDatabase(patience);
    exec("PRAGMA journal_mode=WAL");
    exec("PRAGMA synchronous=NORMAL");
    exec(kSchema);
}

PluginDatabase::~PluginDatabase() { sqlite3_close(m_db); }

void PluginDatabase::openDatabase(std::chrono::milliseconds patience)
{
    // NOMUTEX: only the main thread uses the connection, and every column read would take the lock.
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(m_dbPath.toUtf8().constData(), &m_db, kFlags, nullptr) == SQLITE_OK) {
        // On purpose: the main thread waits for the brief locks of backup programs and readers. A row that is
        // not written shows a wrong state until the next scan, which is worse than a short delay.
        sqlite3_busy_timeout(m_db, static_cast<int>(patience.count()));
        // A 16 MB page cache, so that a large scan does not spill to disk before it commits. Only a tuning
        // setting: failure is ignored.
        sqlite3_exec(m_db, "PRAGMA cache_size=-16000", nullptr, nullptr, nullptr);
        return;
    }
    printLine(u"❌ Failed to open database at "_s + m_dbPath);
    // A failed open returns a handle as well.
    sqlite3_close(m_db);
    m_db = nullptr;
}

bool PluginDatabase::exec(const char* sql)
{
    if (!m_db)
        return false;
    char* message = nullptr;
    const bool succeeded = sqlite3_exec(m_db, sql, nullptr, nullptr, &message) == SQLITE_OK;
    if (!succeeded && message)
        printLine(u"❌ SQL error: "_s + QString::fromUtf8(message));
    sqlite3_free(message);
    return succeeded;
}

void PluginDatabase::replaceAllPlugins(const AudioPlugins& plugins)
{
    ++m_revision;
    exec("BEGIN TRANSACTION");
    // DELETE takes the write lock. If that fails, nothing may be inserted either: another process could
    // release its lock between two rows, and the remaining rows would be added to the old ones.
    if (exec("DELETE FROM plugins")) {
        Statement insert(m_db,
                         "INSERT INTO plugins (id, name, manufacturer, format, originalPath, currentPath, "
                         "isEnabled, version, bundleIdentifier, lastUsed)\n"
                         "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        for (const AudioPlugin& plugin : plugins)
            insertPlugin(insert, plugin);
    }
    // On purpose: never rolled back. Whatever failed above, the next scan refills the table.
    exec("COMMIT");
}

void PluginDatabase::updatePlugin(const AudioPlugin& plugin)
{
    ++m_revision;
    const QByteArray currentPath = plugin.currentPath.toUtf8();
    const QByteArray id = uuidBytes(plugin.id);
    Statement update(m_db, "UPDATE plugins SET currentPath = ?, isEnabled = ? WHERE id = ?");
    update.bindText(1, currentPath);
    update.bindInteger(2, plugin.isEnabled ? 1 : 0);
    update.bindText(3, id);
    update.step();
}

void PluginDatabase::deletePlugin(const QUuid& id)
{
    ++m_revision;
    const QByteArray text = uuidBytes(id);
    Statement remove(m_db, "DELETE FROM plugins WHERE id = ?");
    remove.bindText(1, text);
    remove.step();
}

} // namespace orvanlite
