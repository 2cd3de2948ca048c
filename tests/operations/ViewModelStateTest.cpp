#include "OperationsFixture.h"

#include "operations/PluginSort.h"

namespace orvanlite::test {

class ViewModelStateTest : public OperationsTest {};

TEST_F(ViewModelStateTest, AScanFillsTheCatalogueAndReportsNewPlugins)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Alpha.vst3");
    m_root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/beta.clap");
    QList<bool> loading;
    model().isLoading.observe(&model(), [&] { loading.append(*model().isLoading); });
    std::size_t loadedWhileBusy = 0;
    model().displayedPlugins.observe(&model(), [&] {
        if (*model().isLoading)
            loadedWhileBusy = model().displayedPlugins->size();
    });
    model().error = PluginError(PluginError::Kind::unknownError, u"old"_s);
    model().refreshAllState();
    EXPECT_TRUE(model().error->has_value());
    scan();
    EXPECT_FALSE(model().error->has_value());
    EXPECT_EQ(m_printed, "🔍 Scan debug: existingKeys.count = 0\n"
                         "🔍 Scan debug: plugins.count = 2\n"
                         "⚠️ Scan debug: existingKeys.isEmpty, skipping new plugin detection\n");
    EXPECT_TRUE(model().newlyDetectedPlugins->empty());
    EXPECT_EQ(shownNames(), (QStringList{u"Alpha"_s, u"beta"_s}));
    EXPECT_EQ(model().plugins->size(), 2U);
    EXPECT_EQ(loading, (QList<bool>{true, false}));
    EXPECT_EQ(loadedWhileBusy, 2U) << "busy until the catalogue has the result";

    // A plugin that moved is the same; a new format of a known name is new.
    m_system.files.move(m_root.at(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/beta.clap"),
                        m_root.at(u"/Library/Audio/Plug-Ins/Disabled/CLAP/beta.clap"));
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST/Alpha.vst");
    scan();
    EXPECT_EQ(m_printed, "🔍 Scan debug: existingKeys.count = 2\n"
                         "🔍 Scan debug: plugins.count = 3\n"
                         "🆕 New plugin detected: Alpha (VST)\n"
                         "🔍 Scan debug: newlyDetectedPlugins.count = 1\n");
    ASSERT_EQ(model().newlyDetectedPlugins->size(), 1U);
    EXPECT_EQ(model().newlyDetectedPlugins->front().format, PluginFormat::vst2);
    EXPECT_FALSE(row(u"beta"_s).isEnabled);
    scan();
    EXPECT_TRUE(model().newlyDetectedPlugins->empty());
}

TEST_F(ViewModelStateTest, LoadsPagesOfAHundredRows)
{
    const std::pair<int, QList<int>> cases[] = {{0, {0}}, {100, {100}}, {250, {100, 200, 250}}};
    for (const auto& [count, afterEachPage] : cases) {
        SCOPED_TRACE(count);
        fill(count);
        model().refreshFromDatabase();
        for (qsizetype page = 0; page < afterEachPage.size(); ++page) {
            EXPECT_EQ(std::ssize(model().filteredPlugins()), afterEachPage[page]);
            EXPECT_EQ(model().hasMorePages(), page + 1 < afterEachPage.size());
            model().loadMoreIfNeeded();
        }
        EXPECT_EQ(std::ssize(model().filteredPlugins()), count);
        EXPECT_EQ(*model().totalPluginCount, count);
    }
    fill(1234);
    model().sortOrder = PluginSortOrder{{PluginSortKey::name, PluginSortDirection::reverse}};
    model().loadMoreIfNeeded();
    model().loadAllPages();
    const QStringList names = shownNames();
    ASSERT_EQ(names.size(), 1234);
    EXPECT_EQ(names.front(), u"Plugin 1233"_s);
    EXPECT_TRUE(std::is_sorted(names.rbegin(), names.rend()));
    EXPECT_EQ(model().currentOffset(), 1234);
    EXPECT_FALSE(model().hasMorePages());
    EXPECT_EQ(model().allFilteredPlugins().size(), 1234U);
}

TEST(PluginSortTest, SortsTheCatalogueByTheFirstComparatorOnly)
{
    using enum PluginSortKey;
    using enum PluginSortDirection;
    const std::tuple<PluginSortOrder, QLatin1StringView, bool> rows[] = {
        {{}, "name"_L1, true},
        {{{name, reverse}}, "name"_L1, false},
        {{{manufacturer, forward}, {name, reverse}}, "manufacturer"_L1, true},
        {{{format, reverse}, {lastUsedValue, forward}}, "format"_L1, false},
        {{{statusValue, forward}}, "isEnabled"_L1, true},
        {{{versionValue, reverse}}, "version"_L1, false},
        {{{lastUsedValue, forward}}, "lastUsed"_L1, true},
    };
    for (const auto& [order, column, ascending] : rows) {
        const SqlSort sort = sqlSortFromComparators(order);
        EXPECT_EQ(std::pair(sort.column, sort.ascending), std::pair(column, ascending)) << column.data();
    }
}

TEST_F(ViewModelStateTest, FiltersReloadTheRows)
{
    fill(40);
    model().refreshAllState();
    EXPECT_EQ(*model().allManufacturers, (QStringList{u"Even"_s, u"Odd"_s}));
    EXPECT_EQ(model().plugins->size(), 40U);

    model().selectedFormats = QSet<PluginFormat>{PluginFormat::clap};
    EXPECT_EQ(*model().totalPluginCount, 20);
    model().selectedManufacturers = QSet<QString>{u"Even"_s};
    EXPECT_EQ(*model().totalPluginCount, 0);
    model().selectedFormats.clear();
    EXPECT_EQ(*model().totalPluginCount, 20);
    const auto counts = model().pluginCounts();
    EXPECT_EQ(counts.at(4), std::make_pair(PluginFormat::clap, 20)) << "regardless of the filters";

    m_database.replaceAllPlugins({});
    model().refreshAllState();
    EXPECT_TRUE(model().selectedManufacturers->isEmpty()) << "the manufacturer has no plugin any more";
}

TEST_F(ViewModelStateTest, SearchFollowsEveryChangeFiftyMillisecondsLater)
{
    using namespace std::chrono_literals;
    fill(30);
    model().refreshFromDatabase();
    const int before = countPosts();
    for (const QString& text : {u"p"_s, u"pl"_s, u"plug"_s, u"plugin 00"_s, u"plugin 000"_s}) {
        model().searchText = text;
        m_system.clock.advance(10ms);
    }
    m_system.clock.advance(9ms);
    EXPECT_EQ(countPosts(), before + 1) << "the first change is 59 ms old, the second 49 ms";
    m_system.clock.advance(1s);
    EXPECT_EQ(countPosts(), before + 5) << "no earlier change is cancelled";
    EXPECT_EQ(*model().totalPluginCount, 10);
}

TEST_F(ViewModelStateTest, PublishesTheEnabledCountAtEveryReload)
{
    fill(20);
    const int before = countPosts();
    model().refreshFromDatabase();
    EXPECT_EQ(countPosts(), before + 1 + 1) << "one at creation, one now";
    const platform::Defaults& suite = *m_system.defaults.suite(u"com.yourcompany.Orvanlite"_s);
    EXPECT_EQ(suite.value(u"enabledPluginCount"_s).toInt(), 18);
    EXPECT_TRUE(m_system.notifications.posted.back().userInfo.isEmpty());

    m_system.files.remove(m_system.layout.configuration);
    m_root.addFile(u"/Users/tester/.config", "not a folder");
    model().refreshAllState();
    EXPECT_EQ(countPosts(), before + 4) << "refreshAllState() reloads twice, and posts without the suite too";
}

TEST_F(ViewModelStateTest, SelectsRowsOfTheFirstPage)
{
    fill(150);
    model().refreshFromDatabase();
    const QUuid shown = model().filteredPlugins().front().id;
    const QUuid stale = makeUuid();
    model().selectedPlugins = QSet<QUuid>{stale};
    model().refreshFromDatabase();
    EXPECT_EQ(*model().selectedPlugins, QSet<QUuid>{stale}) << "an empty selection changes no row";

    model().loadAllPages();
    const QUuid onSecondPage = model().filteredPlugins().back().id;
    model().persistedSelections = {shown, onSecondPage, stale};
    model().refreshFromDatabase();
    EXPECT_EQ(*model().selectedPlugins, QSet<QUuid>{shown});
    EXPECT_EQ(model().cachedPluginKeysTransfer->keys.size(), 2) << "an id without a row gives no key";
    model().selectedFormats = QSet<PluginFormat>{PluginFormat::aax};
    EXPECT_TRUE(model().selectedPlugins->isEmpty());
    EXPECT_EQ(model().persistedSelections.size(), 3);
}

TEST_F(ViewModelStateTest, ResetClearsFiltersAndSelectionButNotTheSort)
{
    fill(30);
    model().persistedSelections = {makeUuid()};
    model().selectedFormats = QSet<PluginFormat>{PluginFormat::aax};
    model().selectedManufacturers = QSet<QString>{u"Even"_s};
    model().searchText = u"x"_s;
    model().manufacturerSearchText = u"y"_s;
    model().showAllPlugins = true;
    model().activeProfile = PluginProfile();
    const PluginSortOrder order{{PluginSortKey::format, PluginSortDirection::reverse}};
    model().sortOrder = order;
    const bool trigger = *model().resetViewTrigger;

    model().resetView();
    m_system.clock.advance(std::chrono::milliseconds(100));
    EXPECT_TRUE(model().persistedSelections.isEmpty());
    EXPECT_TRUE(model().selectedFormats->isEmpty() && model().selectedManufacturers->isEmpty());
    EXPECT_TRUE(model().searchText->isEmpty() && model().manufacturerSearchText->isEmpty());
    EXPECT_FALSE(*model().showAllPlugins || model().activeProfile->has_value());
    EXPECT_NE(*model().resetViewTrigger, trigger);
    EXPECT_EQ(*model().sortOrder, order);
    EXPECT_EQ(*model().totalPluginCount, 30);
}

} // namespace orvanlite::test
