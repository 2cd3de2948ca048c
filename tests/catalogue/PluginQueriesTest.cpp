#include "CatalogueFixture.h"

namespace orvanlite::test {

namespace {

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

TEST_F(PluginQueriesTest, FiltersNarrowEveryQueryAlike)
{
    using Format = PluginFormat;
    const std::pair<PluginFilter, QString> rows[] = {
        {{}, u"alpha alpha Beta Delta_x gamma"_s},
        {{.searchText = u"ALPH"_s}, u"alpha alpha"_s},
        {{.searchText = u"acm"_s}, u"Beta gamma"_s},
        {{.searchText = u"ä"_s}, u""_s}, // only ASCII letters lose their case
        {{.searchText = u"Ä"_s}, u"alpha"_s},
        {{.searchText = u"%"_s}, u"alpha alpha Beta Delta_x gamma"_s},
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
        EXPECT_EQ(m_database.getAllFilteredPluginIds(filter), ids) << "the keys play no part";
    }
}

TEST_F(PluginQueriesTest, PagesComeInTheOrderOfTheColumn)
{
    const std::tuple<QLatin1StringView, bool, int, int, QString> rows[] = {
        {"name"_L1, false, 3, 0, u"gamma Delta_x Beta"_s},
        {"name"_L1, true, 2, 2, u"Beta Delta_x"_s},
        {"manufacturer"_L1, true, 1, 0, u"Delta_x"_s},
        {"manufacturer"_L1, false, 2, 0, u"alpha alpha"_s}, // "Älg" stands behind "Zed"
        {"format"_L1, true, 9, 0, u"Delta_x alpha alpha gamma Beta"_s},
        {"isEnabled"_L1, true, 1, 0, u"Beta"_s},
        {"version"_L1, true, 2, 0, u"Delta_x gamma"_s},
        {"lastUsed"_L1, false, 2, 0, u"gamma alpha"_s},
        {"lastUsed"_L1, true, 2, 3, u"alpha gamma"_s}, // without a date first
        {"no column"_L1, true, 9, 0, u""_s},
    };
    for (const auto& [column, ascending, limit, offset, wanted] : rows) {
        SCOPED_TRACE(column.data());
        EXPECT_EQ(names(m_database.queryPlugins({}, column, ascending, limit, offset)), wanted);
    }
}

TEST_F(PluginQueriesTest, StatementAndItsValuesAreTheSameAtEveryCall)
{
    static QStringList statements;
    const auto trace = [](unsigned, void*, void* statement, void*) {
        char* sql = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement));
        statements << QString::fromUtf8(sql);
        sqlite3_free(sql);
        return 0;
    };
    using Extension = int (*)(sqlite3*, char**, const void*);
    static const auto traceFunction = +trace;
    const Extension listen = [](sqlite3* db, char**, const void*) {
        return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, traceFunction, nullptr);
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

TEST_F(PluginQueriesTest, KeysMakersAndIds)
{
    AudioPlugin twin = plugin(u"alpha"_s, PluginFormat::au);
    m_plugins.push_back(twin);
    m_database.replaceAllPlugins(m_plugins);
    EXPECT_EQ(m_database.getAllPluginKeys(),
              QSet<QString>({u"alpha|Audio Units"_s, u"Beta|VST3"_s, u"gamma|VST"_s, u"Delta_x|AAX"_s,
                             u"alpha|CLAP"_s}));
    const QStringList makers = m_database.getDistinctManufacturers();
    EXPECT_EQ(makers.size(), 4);
    EXPECT_EQ(makers.first().toLower(), u"acme"_s);
    EXPECT_EQ(makers.sliced(1), QStringList({u"Maker"_s, u"Zed"_s, u"Älg"_s}));

    EXPECT_TRUE(m_database.getPluginsByIds({}).empty());
    const AudioPlugins found = m_database.getPluginsByIds({twin.id, m_plugins[1].id, makeUuid()});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(found[0] == m_plugins[1] || found[1] == m_plugins[1]) << qPrintable(names(found));

    // More than a selection ever holds, and so many that SQLite refuses: no rows, no line, no crash.
    QSet<QUuid> many{twin.id};
    while (many.size() < 100'000)
        many << makeUuid();
    EXPECT_EQ(m_database.getPluginsByIds(many), AudioPlugins({twin}));
    while (many.size() < 600'000)
        many << makeUuid();
    EXPECT_EQ(printed([&] { EXPECT_TRUE(m_database.getPluginsByIds(many).empty()); }), "");
}

} // namespace

} // namespace orvanlite::test
