#include "catalogue/PluginDatabase.h"

#include "catalogue/Statement.h"
#include "model/Console.h"
#include "model/Uuid.h"
#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/Platform.h"

#include <sqlite3.h>

#include <algorithm>
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

constexpr QByteArrayView kTableStart = "CREATE TABLE ";

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
    : m_files(platform.files)
    , m_dbPath(std::move(dbPath))
    , m_patience(patience)
{
    if (const QString folder = platform::parentFolder(m_dbPath); !folder.isEmpty()) {
        try {
            m_files.createDirectory(folder);
        } catch (const platform::FileError&) {
            // Opening the database fails and is reported.
        }
    }
    openDatabase();
}

void PluginDatabase::openDatabase()
{
    if (!m_connection.open(m_dbPath, m_patience))
        printLine(u"❌ Failed to open database at "_s + m_dbPath);
    exec("PRAGMA journal_mode=WAL");
    exec("PRAGMA synchronous=NORMAL");
    // The text is right, so an error in it is one of the file.
    if (exec(kSchema) == SQLITE_ERROR || hasOtherTable() || m_connection.isMarkedReadOnly())
        m_connection.noteDamage();
}

/// A damaged column name would keep all rows out, and a damaged type would change versions such as 1.10.
bool PluginDatabase::hasOtherTable() const
{
    Statement statement(m_connection, "SELECT sql FROM sqlite_master WHERE name = 'plugins'");
    if (!statement.step())
        return false;
    const QByteArrayView stored = statement.text(0); // without "IF NOT EXISTS"
    return !QByteArrayView(kSchema).contains(stored.sliced(std::min(stored.size(), kTableStart.size())));
}

int PluginDatabase::exec(const char* sql)
{
    if (!m_connection.handle())
        return SQLITE_CANTOPEN;
    char* message = nullptr;
    const int result =
        m_connection.noteChange(sqlite3_exec(m_connection.handle(), sql, nullptr, nullptr, &message));
    if (result != SQLITE_OK && message)
        printLine(u"❌ SQL error: "_s + QString::fromUtf8(message));
    sqlite3_free(message);
    return result;
}

void PluginDatabase::replaceAllPlugins(const AudioPlugins& plugins)
{
    ++m_revision;
    const bool canWrite = !m_connection.isDamaged() || startNewFile();
    replaceRows(plugins);
    // Some damage shows only when the pages are written.
    if (canWrite && m_connection.isDamaged() && startNewFile())
        replaceRows(plugins);
}

void PluginDatabase::replaceRows(const AudioPlugins& plugins)
{
    const bool wasOutOfSpace = m_connection.isOutOfSpace();
    m_connection.forgetOutOfSpace();
    exec("BEGIN TRANSACTION");
    // DELETE takes the write lock. If that fails, nothing may be inserted either: another process could
    // release its lock between two rows, and the remaining rows would be added to the old ones.
    const bool isCleared = exec("DELETE FROM plugins") == SQLITE_OK;
    if (isCleared) {
        Statement insert(m_connection,
                         "INSERT INTO plugins (id, name, manufacturer, format, originalPath, currentPath, "
                         "isEnabled, version, bundleIdentifier, lastUsed)\n"
                         "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        for (const AudioPlugin& plugin : plugins) {
            // SQLite itself rolls back on a full disk: more rows would be added to the old ones.
            if (!m_connection.isInTransaction())
                break;
            insertPlugin(insert, plugin);
        }
    }
    // On purpose: never rolled back. Whatever failed above, the next scan refills the table.
    const bool isReplaced = exec("COMMIT") == SQLITE_OK && isCleared;
    if (wasOutOfSpace && !isReplaced)
        m_connection.noteChange(SQLITE_FULL);
}

/// False when the damaged file could not be set aside.
bool PluginDatabase::startNewFile()
{
    m_connection.close();
    bool isAside = true;
    for (const QString& suffix : {u"-wal"_s, u"-shm"_s, u"-journal"_s, QString()}) {
        const QString file = m_dbPath + suffix;
        const QString aside = m_dbPath + u".damaged"_s + suffix;
        try {
            if (m_files.exists(aside))
                m_files.remove(aside);
            if (m_files.exists(file))
                m_files.move(file, aside);
        } catch (const platform::FileError&) {
            isAside = false; // quiet as any other failure: the list stays empty
        }
    }
    openDatabase();
    return isAside;
}

void PluginDatabase::updatePlugin(const AudioPlugin& plugin)
{
    ++m_revision;
    const QByteArray currentPath = plugin.currentPath.toUtf8();
    const QByteArray id = uuidBytes(plugin.id);
    Statement update(m_connection, "UPDATE plugins SET currentPath = ?, isEnabled = ? WHERE id = ?");
    update.bindText(1, currentPath);
    update.bindInteger(2, plugin.isEnabled ? 1 : 0);
    update.bindText(3, id);
    update.step();
}

void PluginDatabase::deletePlugin(const QUuid& id)
{
    ++m_revision;
    const QByteArray text = uuidBytes(id);
    Statement remove(m_connection, "DELETE FROM plugins WHERE id = ?");
    remove.bindText(1, text);
    remove.step();
}

void PluginDatabase::updatePlugins(const AudioPlugins& plugins)
{
    const Connection::SharedPatience patience(m_connection);
    for (const AudioPlugin& plugin : plugins)
        updatePlugin(plugin);
}

void PluginDatabase::deletePlugins(const AudioPlugins& plugins)
{
    const Connection::SharedPatience patience(m_connection);
    for (const AudioPlugin& plugin : plugins)
        deletePlugin(plugin.id);
}

} // namespace orvanlite
