#include "CatalogueFixture.h"

#include <QFile>

#include <unistd.h>

#include <latch>
#include <thread>

namespace orvanlite::test {

using namespace std::chrono_literals;

namespace {

class PluginDatabaseTest : public testing::Test {
protected:
    TestPlatform m_system;
    const platform::Platform& m_platform = m_system.platform;
    const QString m_path = m_system.layout.applicationFolder() + u"/plugins.db"_s;
};

TEST_F(PluginDatabaseTest, ARecordReadsBackAsItWasWritten)
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
    EXPECT_EQ(printed([&] { database.replaceAllPlugins({plain, strange, unknown}); }), "");
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

TEST_F(PluginDatabaseTest, ASingleRowIsPatchedOrRemoved)
{
    PluginDatabase database(m_platform, m_path);
    const AudioPlugin other = plugin(u"B"_s);
    AudioPlugin stored = plugin(u"A"_s);
    database.replaceAllPlugins({stored, other});
    AudioPlugin changed = stored;
    changed.name = u"ignored"_s;
    changed.version = u"9"_s;
    changed.isEnabled = stored.isEnabled = false;
    changed.currentPath = stored.currentPath = u"/off/A"_s;
    database.updatePlugin(changed);
    const AudioPlugin stranger = plugin(u"A"_s);
    EXPECT_EQ(printed([&] { database.updatePlugin(stranger); }), "");
    database.deletePlugin(stranger.id);
    EXPECT_EQ(all(database), AudioPlugins({stored, other}));
    database.deletePlugin(stored.id);
    EXPECT_EQ(all(database), AudioPlugins({other}));
}

TEST_F(PluginDatabaseTest, DamagedRowsAreSkippedAndOddValuesRead)
{
    // A table without constraints can hold what ours never writes.
    m_system.files.createDirectory(m_system.layout.applicationFolder());
    RawConnection raw(m_path);
    raw.run(
        u"CREATE TABLE plugins (id, name, manufacturer, format, originalPath, currentPath, isEnabled INTEGER, "
        "version, bundleIdentifier, lastUsed REAL)"_s);
    const PluginDatabase database(m_platform, m_path);
    const struct {
        QString change;
        QString wanted; ///< name, state, version, identifier, last use; empty when the row is left out
    } rows[] = {
        {u"id = 'no UUID'"_s, {}},
        {u"id = NULL"_s, {}},
        {u"name = NULL"_s, {}},
        {u"manufacturer = NULL"_s, {}},
        {u"format = NULL"_s, {}},
        {u"format = 'VST2'"_s, {}},
        {u"format = 'vst3'"_s, {}},
        {u"originalPath = NULL"_s, {}},
        {u"currentPath = NULL"_s, {}},
        {u"id = lower(id)"_s, u"A 0 1.0 - -"_s},
        {u"name = 7"_s, u"7 0 1.0 - -"_s},
        {u"name = x''"_s, u" 0 1.0 - -"_s},
        {u"isEnabled = 1"_s, u"A 1 1.0 - -"_s},
        {u"isEnabled = 2"_s, u"A 0 1.0 - -"_s},
        {u"isEnabled = 4294967297"_s, u"A 0 1.0 - -"_s},
        {u"isEnabled = NULL, version = NULL"_s, u"A 0 - - -"_s},
        {u"version = '', bundleIdentifier = 'b'"_s, u"A 0 - b -"_s},
        {u"lastUsed = 0"_s, u"A 0 1.0 - 0"_s},
        {u"lastUsed = -1.5"_s, u"A 0 1.0 - -1.5"_s},
    };
    const QUuid id = *parseUuid("0A0A0A0A-0000-4000-8000-00000000000F");
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.change));
        raw.run(
            u"DELETE FROM plugins; INSERT INTO plugins VALUES ('%1', 'A', 'Maker', 'VST3', '/A', '/A', 0, '1.0', "
            "'', NULL), ('x', 'last', '', '', '', '', 0, '', '', 0); UPDATE plugins SET %2 WHERE name = 'A'"_s
                .arg(uuidText(id), row.change));
        QStringList read;
        for (const AudioPlugin& each : all(database)) {
            EXPECT_EQ(each.id, id);
            read << each.name << QString::number(each.isEnabled) << each.version.value_or(u"-"_s)
                 << each.bundleIdentifier.value_or(u"-"_s)
                 << (each.lastUsed ? QString::number(each.lastUsed->unixTime()) : u"-"_s);
        }
        EXPECT_EQ(read.join(u' '), row.wanted);
        EXPECT_EQ(database.totalCount({}), 2) << "counted all the same";
    }
}

TEST_F(PluginDatabaseTest, AFileThatCannotBeUsedReadsAsEmpty)
{
    const std::string failedOpen = "❌ Failed to open database at " + m_path.toStdString() + '\n';
    const std::string noDatabase = "❌ SQL error: file is not a database\n";
    const QString folder = m_system.layout.applicationFolder();
    const struct {
        const char* name;
        QString folder; ///< to make, or
        QString file;   ///< to write
        std::string opening;
        std::string replacing;
    } rows[] = {
        {"a folder in its place", m_path, {}, failedOpen, ""},
        {"a file in the place of its folder", {}, folder, failedOpen, ""},
        {"rubbish in its place", folder, m_path, noDatabase + noDatabase + noDatabase, noDatabase},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (m_system.files.exists(folder))
            m_system.files.remove(folder);
        if (!row.folder.isEmpty())
            m_system.files.createDirectory(row.folder);
        if (!row.file.isEmpty())
            m_system.files.write(row.file, QByteArray(9000, 'r'), platform::WriteMode::inPlace);

        std::optional<PluginDatabase> database;
        EXPECT_EQ(printed([&] { database.emplace(m_platform, m_path); }), row.opening);
        const AudioPlugin some = plugin(u"A"_s);
        EXPECT_EQ(printed([&] { database->replaceAllPlugins({some}); }), row.replacing);
        EXPECT_EQ(printed([&] {
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

/// Another process that holds the write lock from now until some time has passed.
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

TEST_F(PluginDatabaseTest, ALockIsWaitedForAndNeverHalvesAReplacement)
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
        RawConnection reader(m_path); // a backup in the middle of its work keeps what it began with
        reader.run(u"BEGIN; SELECT name FROM plugins"_s);
        const Holder holder(m_path, 200ms);
        EXPECT_EQ(printed([&] { database.replaceAllPlugins(wanted); }), "");
        EXPECT_EQ(reader.run(u"SELECT name FROM plugins"_s), QStringList{u"Old"_s});
        reader.run(u"COMMIT"_s);
        EXPECT_EQ(reader.run(u"SELECT count(*) FROM plugins"_s), QStringList{u"40"_s});
    }
    PluginDatabase hurried(m_platform, m_path, 20ms);
    {
        const Holder holder(m_path, 200ms); // ends where a row of its own would still be tried
        EXPECT_EQ(printed([&] { hurried.replaceAllPlugins(others); }), "❌ SQL error: database is locked\n");
    }
    EXPECT_EQ(all(hurried), wanted);
    hurried.replaceAllPlugins({wanted.front()});
    EXPECT_EQ(names(all(hurried)), u"New10"_s);
}

TEST_F(PluginDatabaseTest, AFileThatIsLockedWhenItIsOpenedIsUsedLater)
{
    PluginDatabase(m_platform, m_path).replaceAllPlugins({plugin(u"Old"_s)});
    RawConnection raw(m_path);
    raw.run(u"PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE"_s);
    std::optional<PluginDatabase> database;
    const std::string locked = "❌ SQL error: database is locked\n";
    EXPECT_EQ(printed([&] { database.emplace(m_platform, m_path, 10ms); }), locked + locked + locked);
    EXPECT_EQ(database->totalCount({}), 0);
    raw.run(u"COMMIT"_s);
    EXPECT_EQ(names(all(*database)), u"Old"_s);
    database->replaceAllPlugins({plugin(u"New"_s)});
    EXPECT_EQ(names(all(*database)), u"New"_s);
}

TEST_F(PluginDatabaseTest, RowsThatCannotBeStoredCostNoOther)
{
    PluginDatabase database(m_platform, m_path);
    AudioPlugin twin = plugin(u"B"_s);
    const AudioPlugin first = plugin(u"A"_s);
    twin.id = first.id;
    EXPECT_EQ(printed([&] { database.replaceAllPlugins({first, twin, plugin(u"C"_s)}); }), "");
    EXPECT_EQ(names(all(database)), u"A C"_s);
    // In a file of another version the statement cannot even be prepared.
    RawConnection(m_path).run(u"ALTER TABLE plugins DROP COLUMN bundleIdentifier"_s);
    EXPECT_EQ(printed([&] { database.replaceAllPlugins({first}); }), "");
    EXPECT_EQ(database.totalCount({}), 0);
}

TEST_F(PluginDatabaseTest, AReadOnlyFileIsReadAndNeverWritten)
{
    const QString path = m_system.root.at(u"/plugins.db");
    PluginDatabase(m_platform, path).replaceAllPlugins({plugin(u"Old"_s)});
    RawConnection(path).run(u"PRAGMA journal_mode=DELETE"_s);
    QFile::setPermissions(path, QFile::Permissions(0x4444));
    QFile::setPermissions(m_system.root.path(), QFile::Permissions(0x7755));
    // Mode bits stop everyone but root.
    const bool isRoot = geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    ASSERT_TRUE(!isRoot || seteuid(kNobody) == 0);
    QString read;
    const std::string output = printed([&] {
        PluginDatabase database(m_platform, path);
        database.replaceAllPlugins({plugin(u"New"_s)});
        read = names(all(database));
    });
    ASSERT_TRUE(!isRoot || seteuid(0) == 0);
    EXPECT_EQ(read, u"Old"_s);
    const std::string line = "❌ SQL error: attempt to write a readonly database\n";
    EXPECT_EQ(output, line + line);
}

TEST_F(PluginDatabaseTest, OneIsSharedAndInWalMode)
{
    PluginDatabase& shared = PluginDatabase::shared(m_platform);
    EXPECT_EQ(shared.dbPath(), m_path);
    EXPECT_EQ(&PluginDatabase::shared(m_platform), &shared);
    RawConnection raw(m_path);
    EXPECT_EQ(raw.run(u"PRAGMA journal_mode"_s), QStringList(u"wal"_s));
    EXPECT_EQ(raw.run(u"SELECT COUNT(*) FROM sqlite_master WHERE type = 'index'"_s), QStringList(u"7"_s));
}

TEST(PluginDatabaseDeathTest, WithoutAnApplicationSupportFolderTheProcessStops)
{
    testing::FLAGS_gtest_death_test_style =
        "threadsafe"; // a process of its own, without the shared catalogue
    TestPlatform system;
    system.layout.applicationSupport.clear();
    EXPECT_DEATH(PluginDatabase::shared(system.platform), "application support");
}

} // namespace

} // namespace orvanlite::test
