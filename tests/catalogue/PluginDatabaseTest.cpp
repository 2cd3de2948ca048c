#include "CatalogueFixture.h"

#include <QFile>

#include <unistd.h>

namespace orvanlite::test {

namespace {

using PluginDatabaseTest = CatalogueTest;

TEST_F(PluginDatabaseTest, ARecordReadsBackAsItWasWritten)
{
    AudioPlugin plain = plugin(u"A plain"_s);
    AudioPlugin strange = plugin(u"B 'q' |\"% ü 🎹"_s, PluginFormat::au, QString());
    strange.isEnabled = false;
    strange.currentPath = u"/Library/Disabled/x"_s;
    strange.version = QString();
    strange.bundleIdentifier = u"com.x"_s;
    strange.lastUsed = Date::fromUnix(0);
    AudioPlugin unknown = plugin(u"C"_s, PluginFormat::wavesBundle);
    unknown.version = std::nullopt;
    unknown.lastUsed = Date::fromUnix(1'700'000'000.5);

    PluginDatabase database(m_platform, m_path);
    database.replaceAllPlugins({plugin(u"gone"_s)});
    EXPECT_EQ(printed([&] { database.replaceAllPlugins({plain, strange, unknown}); }), u""_s);

    RawConnection raw(m_path);
    const QString id = uuidText(strange.id);
    EXPECT_EQ(id, id.toUpper());
    EXPECT_EQ(
        raw.run(u"SELECT * FROM plugins ORDER BY rowid LIMIT 1 OFFSET 1"_s),
        QStringList(
            id + u"|B 'q' |\"% ü 🎹||Audio Units|/Library/B 'q' |\"% ü 🎹|/Library/Disabled/x|0||com.x|0.0"_s));
    EXPECT_EQ(
        raw.run(
            u"SELECT typeof(isEnabled), quote(version), quote(bundleIdentifier), lastUsed FROM plugins"_s),
        QStringList(
            {u"integer|'1.0'|''|NULL"_s, u"integer|''|'com.x'|0.0"_s, u"integer|''|''|1700000000.5"_s}));

    strange.version = std::nullopt; // an empty version is an absent one
    EXPECT_EQ(all(database), AudioPlugins({plain, strange, unknown}));
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
    EXPECT_EQ(all(database), AudioPlugins({stored, other}));

    const AudioPlugin stranger = plugin(u"A"_s);
    EXPECT_EQ(printed([&] {
                  database.updatePlugin(stranger);
                  database.deletePlugin(stranger.id);
              }),
              u""_s);
    EXPECT_EQ(all(database), AudioPlugins({stored, other}));
    database.deletePlugin(stored.id);
    EXPECT_EQ(all(database), AudioPlugins({other}));
}

TEST_F(PluginDatabaseTest, DamagedRowsAreSkippedAndOddValuesRead)
{
    // The table of another program: without constraints it can hold what ours never writes.
    m_system.root.addFile(u"/Users/tester/odd/plugins.db"_s);
    const QString path = m_system.root.at(u"/Users/tester/odd/plugins.db"_s);
    RawConnection raw(path);
    raw.run(
        u"CREATE TABLE plugins (id, name, manufacturer, format, originalPath, currentPath, isEnabled INTEGER, "
        "version, bundleIdentifier, lastUsed REAL)"_s);
    const PluginDatabase database(m_platform, path);
    const AudioPlugin whole = [] {
        AudioPlugin made = plugin(u"A"_s);
        made.id = *parseUuid("0A0A0A0A-0000-4000-8000-00000000000F");
        made.isEnabled = false;
        return made;
    }();
    const auto with = [&](auto change) {
        AudioPlugin made = whole;
        change(made);
        return std::optional(made);
    };
    const struct {
        QString change;
        std::optional<AudioPlugin> wanted;
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
        {u"id = lower(id)"_s, whole},
        {u"name = 7"_s, with([](AudioPlugin& p) { p.name = u"7"_s; })},
        {u"name = x''"_s, with([](AudioPlugin& p) { p.name = u""_s; })},
        {u"isEnabled = 1"_s, with([](AudioPlugin& p) { p.isEnabled = true; })},
        {u"isEnabled = 2"_s, whole},
        {u"isEnabled = 4294967297"_s, whole},
        {u"isEnabled = 1.5"_s, whole},
        {u"isEnabled = NULL"_s, whole},
        {u"version = NULL"_s, with([](AudioPlugin& p) { p.version = std::nullopt; })},
        {u"version = ''"_s, with([](AudioPlugin& p) { p.version = std::nullopt; })},
        {u"bundleIdentifier = 'b'"_s, with([](AudioPlugin& p) { p.bundleIdentifier = u"b"_s; })},
        {u"lastUsed = 0"_s, with([](AudioPlugin& p) { p.lastUsed = Date::fromUnix(0); })},
        {u"lastUsed = -1.5"_s, with([](AudioPlugin& p) { p.lastUsed = Date::fromUnix(-1.5); })},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.change));
        raw.run(u"DELETE FROM plugins; INSERT INTO plugins VALUES ('%1', 'A', 'Maker', 'VST3', '/Library/A', "
                "'/Library/A', 0, '1.0', '', NULL), ('x', 'last', '', '', '', '', 0, '', '', 0);"
                "UPDATE plugins SET %2 WHERE name = 'A'"_s.arg(uuidText(whole.id), row.change));
        const AudioPlugins wanted = row.wanted ? AudioPlugins{*row.wanted} : AudioPlugins{};
        EXPECT_EQ(all(database), wanted);
        EXPECT_EQ(database.totalCount({}), 2) << "counted all the same";
    }
}

TEST_F(PluginDatabaseTest, AFileThatCannotBeUsedReadsAsEmpty)
{
    const QString noDatabase = u"❌ SQL error: file is not a database\n"_s;
    const struct {
        const char* name;
        QString blocker; ///< folder when it ends in "/"
        QString opening;
        QString replacing;
    } rows[] = {
        {"a folder in its place", m_path + u'/', u"❌ Failed to open database at %1\n"_s.arg(m_path), u""_s},
        {"a file in the place of its folder", m_system.layout.applicationFolder(),
         u"❌ Failed to open database at %1\n"_s.arg(m_path), u""_s},
        {"rubbish in its place", m_path, noDatabase.repeated(3), noDatabase},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (m_system.files.exists(m_system.layout.applicationFolder()))
            m_system.files.remove(m_system.layout.applicationFolder());
        const QString blocker = row.blocker.sliced(m_system.root.path().size());
        if (blocker.endsWith(u'/'))
            m_system.root.addFolder(blocker);
        else
            m_system.root.addFile(blocker, QByteArray("rubbish ").repeated(1000));

        std::unique_ptr<PluginDatabase> database;
        EXPECT_EQ(printed([&] { database = std::make_unique<PluginDatabase>(m_platform, m_path); }),
                  row.opening);
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
                  u""_s);
    }
}

TEST_F(PluginDatabaseTest, ALockedFileKeepsItsRows)
{
    PluginDatabase database(m_platform, m_path);
    database.replaceAllPlugins({plugin(u"Old"_s)});
    RawConnection raw(m_path);
    raw.run(u"BEGIN IMMEDIATE"_s);
    EXPECT_EQ(printed([&] { database.replaceAllPlugins({plugin(u"New"_s)}); }),
              u"❌ SQL error: database is locked\n"_s);
    EXPECT_EQ(names(all(database)), u"Old"_s);
    raw.run(u"COMMIT"_s);
    database.replaceAllPlugins({plugin(u"New"_s)});
    EXPECT_EQ(names(all(database)), u"New"_s);
}

TEST_F(PluginDatabaseTest, AReadOnlyFileIsReadAndNeverWritten)
{
    const QString path = m_system.root.at(u"/plugins.db");
    PluginDatabase(m_platform, path).replaceAllPlugins({plugin(u"Old"_s)});
    RawConnection(path).run(u"PRAGMA journal_mode=DELETE"_s);
    QFile::setPermissions(path, QFile::Permissions(0x4444));
    QFile::setPermissions(m_system.root.path(), QFile::Permissions(0x7555));
    // Mode bits stop everyone but root.
    const bool isRoot = geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    if (isRoot) {
        ASSERT_EQ(seteuid(kNobody), 0);
    }
    QString read;
    const QString output = printed([&] {
        PluginDatabase database(m_platform, path);
        database.replaceAllPlugins({plugin(u"New"_s)});
        read = names(all(database));
    });
    if (isRoot) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(read, u"Old"_s);
    EXPECT_EQ(output.toStdString(), "❌ SQL error: attempt to write a readonly database\n"
                                    "❌ SQL error: attempt to write a readonly database\n");
}

TEST_F(PluginDatabaseTest, TheFileIsSharedAndInWalMode)
{
    PluginDatabase& shared = PluginDatabase::shared(m_platform);
    EXPECT_EQ(shared.dbPath(), m_path);
    EXPECT_EQ(&PluginDatabase::shared(m_platform), &shared);
    RawConnection raw(m_path);
    EXPECT_EQ(raw.run(u"PRAGMA journal_mode"_s), QStringList(u"wal"_s));
    EXPECT_EQ(raw.run(u"SELECT name || sql FROM sqlite_master WHERE name = 'idx_plugins_lastUsed'"_s),
              QStringList(u"idx_plugins_lastUsedCREATE INDEX idx_plugins_lastUsed ON plugins(lastUsed)"_s));
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
