#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "support/Fakes.h"

#include <sqlite3.h>

#include <latch>
#include <thread>

namespace orvanlite::test {

using namespace std::chrono_literals;

namespace {

/// A second connection that reads the raw rows or holds a lock.
class RawConnection {
public:
    explicit RawConnection(const QString& path) { sqlite3_open(path.toUtf8().constData(), &m_db); }
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;
    ~RawConnection() { sqlite3_close(m_db); }

    /// Returns the first column; fails the test on an error.
    QStringList run(const QString& sql)
    {
        QStringList rows;
        const auto keep = [](void* list, int, char** values, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(values[0]));
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_db, sql.toUtf8().constData(), keep, &rows, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_db);
        return rows;
    }

private:
    sqlite3* m_db = nullptr;
};

AudioPlugin plugin(const QString& name, PluginFormat format = PluginFormat::vst3,
                   const QString& manufacturer = u"Maker"_s)
{
    const QString path = u"/Library/"_s + name;
    return {makeUuid(), name, manufacturer, format, path, path, true, u"1.0"_s, std::nullopt, std::nullopt};
}

QString names(const AudioPlugins& plugins)
{
    QStringList list;
    for (const AudioPlugin& each : plugins)
        list << each.name;
    return list.join(u' ');
}

AudioPlugins all(const PluginDatabase& database)
{
    return database.queryPlugins({}, "name"_L1, true, 1000, 0);
}

class PluginDatabaseTest : public testing::Test {
protected:
    TestPlatform m_system;
    const platform::Platform& m_platform = m_system.platform;
    const QString m_path = m_system.layout.applicationFolder() + u"/plugins.db"_s;
};

TEST_F(PluginDatabaseTest, ReadsARecordAsItWasWritten)
{
    const AudioPlugin plain = plugin(u"A"_s);
    AudioPlugin strange = plugin(u"B 'q' |\"% ü 🎹"_s, PluginFormat::au, QString());
    strange.isEnabled = false;
    strange.currentPath = u"/off"_s;
    strange.version = QString();
    strange.bundleIdentifier = u"com.x"_s;
    strange.lastUsed = Date::fromUnix(0);
    AudioPlugin unknown = plugin(u"\uFEFFC"_s, PluginFormat::wavesBundle, u"\uFEFFM"_s);
    unknown.version = std::nullopt;
    unknown.lastUsed = Date::fromUnix(1'700'000'000.5);

    PluginDatabase database(m_platform, m_path);
    database.replaceAllPlugins({plugin(u"gone"_s)});
    EXPECT_EQ(printedBy([&] { database.replaceAllPlugins({plain, strange, unknown}); }), "");
    const QString raw =
        u"SELECT id || quote(name) || quote(manufacturer) || quote(format) || quote(originalPath) || "
        "quote(currentPath) || quote(isEnabled) || quote(version) || quote(bundleIdentifier) || "
        "quote(lastUsed) FROM plugins WHERE name >= 'B'"_s;
    EXPECT_EQ(RawConnection(m_path).run(raw),
              QStringList(
                  {uuidText(strange.id) +
                       u"'B ''q'' |\"% ü 🎹''''Audio Units''/Library/B ''q'' |\"% ü 🎹''/off'0'''com.x'0.0"_s,
                   uuidText(unknown.id) +
                       u"'\uFEFFC''\uFEFFM''Waves''/Library/\uFEFFC''/Library/\uFEFFC'1''''1700000000.5"_s}));
    strange.version = std::nullopt; // an empty version is an absent one
    EXPECT_EQ(all(database), AudioPlugins({plain, strange, unknown}));
    EXPECT_TRUE(database.getAllPluginKeys().contains(u"\uFEFFC|Waves"_s));
    EXPECT_EQ(database.countPlugins(true), 2);
    EXPECT_EQ(database.countPlugins(false), 1);
    EXPECT_EQ(all(PluginDatabase(m_platform, m_path)).size(), 3U) << "a second start keeps the rows";
    database.replaceAllPlugins({});
    EXPECT_EQ(database.totalCount({}), 0);
}

TEST_F(PluginDatabaseTest, UpdatesOrDeletesASingleRow)
{
    PluginDatabase database(m_platform, m_path);
    const AudioPlugin other = plugin(u"B"_s);
    AudioPlugin stored = plugin(u"A"_s);
    database.replaceAllPlugins({stored, other});
    AudioPlugin changed = stored;
    changed.name = u"ignored"_s;
    changed.version = u"ignored"_s;
    changed.isEnabled = stored.isEnabled = false;
    changed.currentPath = stored.currentPath = u"/off/A"_s;
    database.updatePlugin(changed);
    const AudioPlugin stranger = plugin(u"A"_s);
    EXPECT_EQ(printedBy([&] { database.updatePlugin(stranger); }), "");
    database.deletePlugin(stranger.id);
    EXPECT_EQ(all(database), AudioPlugins({stored, other}));
    database.deletePlugin(stored.id);
    EXPECT_EQ(all(database), AudioPlugins({other}));
}

TEST_F(PluginDatabaseTest, SkipsDamagedRowsAndReadsUnusualValues)
{
    // A table without constraints holds values that ours never writes.
    m_system.files.createDirectory(m_system.layout.applicationFolder());
    RawConnection raw(m_path);
    raw.run(
        u"CREATE TABLE plugins (id, name, manufacturer, format, originalPath, currentPath, isEnabled INTEGER, "
        "version, bundleIdentifier, lastUsed REAL)"_s);
    const PluginDatabase database(m_platform, m_path);
    // A change, then name, state, version, identifier and last use; empty when the row is skipped.
    const std::pair<QString, QString> rows[] = {
        {u"id = 'no UUID'"_s, {}},
        {u"id = NULL"_s, {}},
        {u"name = NULL"_s, {}},
        {u"manufacturer = NULL"_s, {}},
        {u"format = NULL"_s, {}},
        {u"format = 'vst3'"_s, {}},
        {u"originalPath = NULL"_s, {}},
        {u"currentPath = NULL"_s, {}},
        {u"id = lower(id), name = 7"_s, u"7 0 1.0 - -"_s},
        {u"name = x''"_s, u" 0 1.0 - -"_s},
        {u"isEnabled = 1"_s, u"A 1 1.0 - -"_s},
        {u"isEnabled = 4294967297"_s, u"A 0 1.0 - -"_s},
        {u"isEnabled = NULL, version = NULL"_s, u"A 0 - - -"_s},
        {u"version = '', bundleIdentifier = 'b'"_s, u"A 0 - b -"_s},
        {u"lastUsed = -1.5"_s, u"A 0 1.0 - -1.5"_s},
    };
    const QUuid id = *parseUuid("0A0A0A0A-0000-4000-8000-00000000000F");
    for (const auto& [change, wanted] : rows) {
        SCOPED_TRACE(qPrintable(change));
        raw.run(
            u"DELETE FROM plugins; INSERT INTO plugins VALUES ('%1', 'A', 'Maker', 'VST3', '/A', '/A', 0, '1.0', "
            "'', NULL), ('x', 'last', '', '', '', '', 0, '', '', 0); UPDATE plugins SET %2 WHERE name = 'A'"_s
                .arg(uuidText(id), change));
        QStringList read;
        for (const AudioPlugin& each : all(database)) {
            EXPECT_EQ(each.id, id);
            read << each.name << QString::number(each.isEnabled) << each.version.value_or(u"-"_s)
                 << each.bundleIdentifier.value_or(u"-"_s)
                 << (each.lastUsed ? QString::number(each.lastUsed->unixTime()) : u"-"_s);
        }
        EXPECT_EQ(read.join(u' '), wanted);
        EXPECT_EQ(database.totalCount({}), 2) << "still counted";
    }
}

TEST_F(PluginDatabaseTest, ReadsAnUnusableFileAsEmpty)
{
    const std::string failedOpen = "❌ Failed to open database at " + m_path.toStdString() + '\n';
    const std::string noDatabase = "❌ SQL error: file is not a database\n";
    const QString folder = m_system.layout.applicationFolder();
    // The folder to create or the file to write, what opening prints, and whether the next scan starts a new
    // file.
    const std::tuple<QString, QString, std::string, bool> rows[] = {
        {m_path, {}, failedOpen, false},
        {{}, folder, failedOpen, false},
        {folder, m_path, noDatabase + noDatabase + noDatabase, true},
    };
    for (const auto& [newFolder, newFile, opening, heals] : rows) {
        SCOPED_TRACE(qPrintable(newFolder + newFile));
        QDir(folder).removeRecursively();
        QFile::remove(folder);
        if (newFile.isEmpty())
            m_system.files.createDirectory(newFolder);
        else
            m_system.root.addFile(newFile.sliced(m_system.root.path().size()), QByteArray(9000, 'r'));

        std::optional<PluginDatabase> database;
        EXPECT_EQ(printedBy([&] { database.emplace(m_platform, m_path); }), opening);
        const AudioPlugin some = plugin(u"A"_s);
        EXPECT_EQ(printedBy([&] {
                      EXPECT_TRUE(all(*database).empty());
                      database->replaceAllPlugins({some});
                      EXPECT_EQ(all(*database).size(), heals ? 1U : 0U);
                      database->updatePlugin(some);
                      database->deletePlugin(some.id);
                      EXPECT_TRUE(all(*database).empty());
                      EXPECT_EQ(database->totalCount({}) + database->countPlugins(true), 0);
                      EXPECT_TRUE(database->getAllFilteredPluginIds({}).isEmpty());
                      EXPECT_TRUE(database->getAllPluginKeys().isEmpty());
                      EXPECT_TRUE(database->getDistinctManufacturers().isEmpty());
                      EXPECT_TRUE(database->getPluginsByIds({some.id}).empty());
                  }),
                  "");
    }
}

/// Holds the write lock for a while, like another process.
class Holder {
public:
    Holder(const QString& path, std::chrono::milliseconds time)
    {
        m_thread = std::thread([this, path, time] {
            RawConnection raw(path);
            raw.run(u"BEGIN IMMEDIATE"_s);
            m_isHeld.count_down();
            std::this_thread::sleep_for(time);
            raw.run(u"COMMIT"_s);
        });
        m_isHeld.wait();
    }
    ~Holder() { m_thread.join(); }

private:
    std::latch m_isHeld{1};
    std::thread m_thread;
};

TEST_F(PluginDatabaseTest, WaitsForALockAndReplacesAllRowsOrNone)
{
    AudioPlugins wanted;
    AudioPlugins others;
    for (int i = 10; i < 50; ++i) {
        wanted.push_back(plugin(u"New%1"_s.arg(i)));
        others.push_back(plugin(u"Other"_s));
    }
    {
        PluginDatabase database(m_platform, m_path);
        database.replaceAllPlugins({plugin(u"Old"_s)});
        RawConnection reader(m_path); // a running backup keeps its snapshot
        reader.run(u"BEGIN; SELECT name FROM plugins"_s);
        const Holder holder(m_path, 200ms);
        EXPECT_EQ(printedBy([&] { database.replaceAllPlugins(wanted); }), "");
        EXPECT_EQ(reader.run(u"SELECT name FROM plugins"_s), QStringList{u"Old"_s});
        reader.run(u"COMMIT"_s);
        EXPECT_EQ(reader.run(u"SELECT count(*) FROM plugins"_s), QStringList{u"40"_s});
    }
    PluginDatabase hurried(m_platform, m_path, 20ms);
    {
        const Holder holder(m_path, 200ms); // is released while single rows would still be tried
        EXPECT_EQ(printedBy([&] { hurried.replaceAllPlugins(others); }), "❌ SQL error: database is locked\n");
    }
    EXPECT_EQ(all(hurried), wanted);
    hurried.replaceAllPlugins({wanted.front()});
    EXPECT_EQ(names(all(hurried)), u"New10"_s);
}

TEST_F(PluginDatabaseTest, UsesAFileLaterThatIsLockedWhenOpened)
{
    PluginDatabase(m_platform, m_path).replaceAllPlugins({plugin(u"Old"_s)});
    RawConnection raw(m_path);
    raw.run(u"PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE"_s);
    std::optional<PluginDatabase> database;
    const std::string locked = "❌ SQL error: database is locked\n";
    EXPECT_EQ(printedBy([&] { database.emplace(m_platform, m_path, 10ms); }), locked + locked + locked);
    EXPECT_EQ(database->totalCount({}), 0);
    raw.run(u"COMMIT"_s);
    EXPECT_EQ(names(all(*database)), u"Old"_s);
    database->replaceAllPlugins({plugin(u"New"_s)});
    EXPECT_EQ(names(all(*database)), u"New"_s);
}

TEST_F(PluginDatabaseTest, RowsThatCannotBeStoredAffectNoOther)
{
    PluginDatabase database(m_platform, m_path);
    AudioPlugin twin = plugin(u"B"_s);
    const AudioPlugin first = plugin(u"A"_s);
    twin.id = first.id;
    EXPECT_EQ(printedBy([&] { database.replaceAllPlugins({first, twin, plugin(u"C"_s)}); }), "");
    EXPECT_EQ(names(all(database)), u"A C"_s);
    // With the table of another version, the statement cannot be prepared.
    RawConnection(m_path).run(u"ALTER TABLE plugins DROP COLUMN bundleIdentifier"_s);
    EXPECT_EQ(printedBy([&] { database.replaceAllPlugins({first}); }), "");
    EXPECT_EQ(database.totalCount({}), 0);
}

TEST_F(PluginDatabaseTest, ReadsAReadOnlyFileAndNeverWritesIt)
{
    const QString path = m_system.root.at(u"/plugins.db");
    PluginDatabase(m_platform, path).replaceAllPlugins({plugin(u"Old"_s)});
    RawConnection(path).run(u"PRAGMA journal_mode=DELETE"_s);
    m_system.root.setMode(u"/plugins.db", 0444);
    m_system.root.setMode(u"", 0755);
    QString read;
    const std::string output = printedBy([&] {
        const WithoutRights denied;
        PluginDatabase database(m_platform, path);
        database.replaceAllPlugins({plugin(u"New"_s)});
        read = names(all(database));
    });
    EXPECT_EQ(read, u"Old"_s);
    const std::string line = "❌ SQL error: attempt to write a readonly database\n";
    EXPECT_EQ(output, line + line);
}

TEST_F(PluginDatabaseTest, SharesOneDatabaseInWalMode)
{
    PluginDatabase& shared = PluginDatabase::shared(m_platform);
    EXPECT_EQ(shared.dbPath(), m_path);
    EXPECT_EQ(&PluginDatabase::shared(m_platform), &shared);
    RawConnection raw(m_path);
    EXPECT_EQ(raw.run(u"PRAGMA journal_mode"_s), QStringList(u"wal"_s));
    EXPECT_EQ(raw.run(u"SELECT COUNT(*) FROM sqlite_master WHERE type = 'index'"_s), QStringList(u"7"_s));
}

TEST(PluginDatabaseDeathTest, AbortsWithoutAnApplicationSupportFolder)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe"; // a new process, without the shared catalogue
    TestPlatform system;
    system.layout.applicationSupport.clear();
    EXPECT_DEATH(PluginDatabase::shared(system.platform), "application support");
}

class PluginQueriesTest : public testing::Test {
protected:
    PluginQueriesTest()
    {
        m_plugins[1].isEnabled = false;
        m_plugins[2].version = u"0.9"_s;
        m_plugins[3].version = std::nullopt;
        m_plugins[0].lastUsed = Date::fromUnix(5);
        m_plugins[2].lastUsed = Date::fromUnix(20);
        m_database.replaceAllPlugins(m_plugins);
    }

    TestPlatform m_system;
    AudioPlugins m_plugins{
        plugin(u"alpha"_s, PluginFormat::au, u"Zed"_s), plugin(u"Beta"_s, PluginFormat::vst3, u"acme"_s),
        plugin(u"gamma"_s, PluginFormat::vst2, u"Acme"_s), plugin(u"Delta_x"_s, PluginFormat::aax, QString()),
        plugin(u"alpha"_s, PluginFormat::clap, u"Älg"_s)};
    PluginDatabase m_database{m_system.platform, u":memory:"_s};
};

TEST_F(PluginQueriesTest, FiltersApplyToEveryQuery)
{
    using Format = PluginFormat;
    const std::pair<PluginFilter, QString> rows[] = {
        {{}, u"alpha alpha Beta Delta_x gamma"_s},
        {{.searchText = u"ALPH"_s}, u"alpha alpha"_s},
        {{.searchText = u"acm"_s}, u"Beta gamma"_s},
        {{.searchText = u"ä"_s}, u""_s}, // only ASCII letters ignore case
        {{.searchText = u"Ä"_s}, u"alpha"_s},
        {{.searchText = u"d%a_x"_s}, u"Delta_x"_s},
        {{.searchText = u"' OR 1 --"_s}, u""_s},
        {{.formats = {Format::vst2, Format::vst3}}, u"Beta gamma"_s},
        {{.manufacturers = {u"ACME"_s, u"zed"_s}}, u"alpha Beta gamma"_s},
        {{.manufacturers = {u"älg"_s}}, u""_s},
        {{.manufacturers = {QString()}}, u"Delta_x"_s},
        {{.pluginKeys = {u"alpha|CLAP"_s, u"Beta|VST3"_s, u"gamma|vst"_s}}, u"alpha Beta"_s},
        {{u"a"_s, {Format::vst2, Format::au}, {u"Acme"_s}, {u"gamma|VST"_s, u"alpha|Audio Units"_s}},
         u"gamma"_s},
    };
    for (const auto& [filter, wanted] : rows) {
        SCOPED_TRACE(qPrintable(filter.searchText + u": "_s + wanted));
        const AudioPlugins found = m_database.queryPlugins(filter, "name"_L1, true, 100, 0);
        EXPECT_EQ(names(found), wanted);
        EXPECT_EQ(m_database.totalCount(filter), static_cast<int>(found.size()));
        PluginFilter withoutKeys = filter;
        withoutKeys.pluginKeys.clear();
        QSet<QUuid> ids;
        for (const AudioPlugin& each : m_database.queryPlugins(withoutKeys, "name"_L1, true, 100, 0))
            ids << each.id;
        EXPECT_EQ(m_database.getAllFilteredPluginIds(filter), ids) << "the keys do not apply";
    }
}

TEST_F(PluginQueriesTest, SortsPagesByTheColumn)
{
    const std::tuple<QLatin1StringView, bool, int, int, QString> rows[] = {
        {"name"_L1, true, 2, 2, u"Beta Delta_x"_s},
        {"manufacturer"_L1, true, 1, 0, u"Delta_x"_s},
        {"manufacturer"_L1, false, 2, 0, u"alpha alpha"_s}, // "Älg" sorts after "Zed"
        {"format"_L1, true, 9, 0, u"Delta_x alpha alpha gamma Beta"_s},
        {"isEnabled"_L1, true, 1, 0, u"Beta"_s},
        {"version"_L1, true, 2, 0, u"Delta_x gamma"_s},
        {"lastUsed"_L1, true, 2, 3, u"alpha gamma"_s}, // without a date first
        {"no column"_L1, true, 9, 0, u""_s},
    };
    for (const auto& [column, ascending, limit, offset, wanted] : rows)
        EXPECT_EQ(names(m_database.queryPlugins({}, column, ascending, limit, offset)), wanted)
            << column.data();
}

TEST_F(PluginQueriesTest, BuildsTheSameStatementForTheSameFilter)
{
    static QStringList statements;
    const auto listen = +[](sqlite3* db, char**, const void*) {
        const auto trace = [](unsigned, void*, void* statement, void*) {
            char* sql = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement));
            statements << QString::fromUtf8(sql);
            sqlite3_free(sql);
            return 0;
        };
        return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, trace, nullptr);
    };
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(listen));
    const PluginDatabase database(m_system.platform, u":memory:"_s);
    sqlite3_reset_auto_extension();
    statements.clear();
    (void)database.queryPlugins({u"x'%"_s,
                                 {PluginFormat::au, PluginFormat::aax},
                                 {u"b"_s, u"a"_s, u"B"_s},
                                 {u"𐐀|VST"_s, u"\uFFFD|VST"_s}},
                                "lastUsed"_L1, false, 100, 7);
    EXPECT_EQ(
        statements.value(0),
        u"SELECT id, name, manufacturer, format, originalPath, currentPath, isEnabled, version, bundleIdentifier, "
        "lastUsed\nFROM plugins\n"
        "WHERE (name LIKE '%x''%%' OR manufacturer LIKE '%x''%%') AND format IN ('AAX', 'Audio Units') "
        "AND manufacturer IN ('B', 'a', 'b') AND (name || '|' || format) IN ('\uFFFD|VST', '𐐀|VST')\n"
        "ORDER BY lastUsed COLLATE NOCASE DESC\nLIMIT 100 OFFSET 7"_s);
}

TEST_F(PluginQueriesTest, ReturnsKeysManufacturersAndRowsByIds)
{
    AudioPlugin twin = plugin(u"alpha"_s, PluginFormat::au);
    m_plugins.push_back(twin);
    m_database.replaceAllPlugins(m_plugins);
    EXPECT_EQ(m_database.getAllPluginKeys(),
              QSet<QString>({u"alpha|Audio Units"_s, u"Beta|VST3"_s, u"gamma|VST"_s, u"Delta_x|AAX"_s,
                             u"alpha|CLAP"_s}));
    const QStringList manufacturers = m_database.getDistinctManufacturers();
    EXPECT_EQ(manufacturers.size(), 4);
    EXPECT_EQ(manufacturers.first().toLower(), u"acme"_s);
    EXPECT_EQ(manufacturers.sliced(1), QStringList({u"Maker"_s, u"Zed"_s, u"Älg"_s}));

    const AudioPlugins found = m_database.getPluginsByIds({twin.id, m_plugins[1].id, makeUuid()});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(found[0] == m_plugins[1] || found[1] == m_plugins[1]) << qPrintable(names(found));

    // More than a selection ever has, and so many that SQLite refuses: no rows, no message, no crash.
    QSet<QUuid> many{twin.id};
    while (many.size() < 100'000)
        many << makeUuid();
    EXPECT_EQ(m_database.getPluginsByIds(many), AudioPlugins({twin}));
    while (many.size() < 600'000)
        many << makeUuid();
    EXPECT_EQ(printedBy([&] { EXPECT_TRUE(m_database.getPluginsByIds(many).empty()); }), "");
}

} // namespace

} // namespace orvanlite::test
