#include "OperationsFixture.h"

namespace orvanlite::test {

class ViewModelStateTest : public OperationsTest {};

TEST_F(ViewModelStateTest, PagesByTheHundred)
{
    const struct {
        int rows;
        QList<int> afterEachPage;
    } cases[] = {{0, {0}}, {99, {99}}, {100, {100}}, {101, {100, 101}}, {250, {100, 200, 250}}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.rows);
        fill(each.rows);
        model().refreshFromDatabase();
        for (qsizetype page = 0; page < each.afterEachPage.size(); ++page) {
            EXPECT_EQ(model().filteredPlugins().size(), static_cast<std::size_t>(each.afterEachPage[page]));
            EXPECT_EQ(model().currentOffset(), 100 * page);
            EXPECT_EQ(model().hasMorePages(), page + 1 < each.afterEachPage.size());
            model().loadMoreIfNeeded();
        }
        EXPECT_EQ(model().filteredPlugins().size(), static_cast<std::size_t>(each.rows));
        EXPECT_EQ(*model().totalPluginCount, each.rows);
    }
}

TEST_F(ViewModelStateTest, LoadsAllPagesAtOnceInOrder)
{
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

TEST_F(ViewModelStateTest, ReloadsWithTheFilters)
{
    fill(40);
    model().refreshAllState();
    EXPECT_EQ(*model().dbTotalCount, 40);
    EXPECT_EQ(*model().dbEnabledCount, 36);
    EXPECT_EQ(*model().dbDisabledCount, 4);
    EXPECT_EQ(*model().allManufacturers, (QStringList{u"Even"_s, u"Odd"_s}));
    EXPECT_EQ(model().plugins->size(), 40U);

    model().selectedFormats = QSet<PluginFormat>{PluginFormat::clap};
    EXPECT_EQ(*model().totalPluginCount, 20);
    model().selectedManufacturers = QSet<QString>{u"Even"_s};
    EXPECT_EQ(*model().totalPluginCount, 0);
    model().selectedFormats.clear();
    EXPECT_EQ(*model().totalPluginCount, 20);

    const auto counts = model().pluginCounts();
    ASSERT_EQ(counts.size(), 6U);
    EXPECT_EQ(counts[1], std::make_pair(PluginFormat::vst3, 20));
    EXPECT_EQ(counts[4], std::make_pair(PluginFormat::clap, 20)) << "the filters play no part";

    m_database.replaceAllPlugins({});
    model().refreshAllState();
    EXPECT_TRUE(model().selectedManufacturers->isEmpty()) << "no plugin of the maker is left";
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
    EXPECT_EQ(m_system.defaults.openedSuites.last(), u"com.yourcompany.Orvanlite"_s);
    EXPECT_EQ(m_system.defaults.suiteDefaults.values.value(u"enabledPluginCount"_s), 18);
    EXPECT_TRUE(m_system.notifications.posted.back().userInfo.isEmpty());

    m_system.defaults.suiteFails = true;
    model().refreshAllState();
    EXPECT_EQ(countPosts(), before + 4) << "refreshAllState() reloads twice, and posts without the suite too";
}

TEST_F(ViewModelStateTest, MarksWhatIsSelectedOnTheFirstPage)
{
    fill(150);
    model().refreshFromDatabase();
    const QUuid shown = model().filteredPlugins().front().id;
    const QUuid stale = makeUuid();
    model().selectedPlugins = QSet<QUuid>{stale};
    model().refreshFromDatabase();
    EXPECT_EQ(*model().selectedPlugins, QSet<QUuid>{stale}) << "an empty selection leaves the marks alone";

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
    using namespace std::chrono_literals;
    fill(30);
    model().persistedSelections = {makeUuid()};
    model().selectedFormats = QSet<PluginFormat>{PluginFormat::aax};
    model().selectedManufacturers = QSet<QString>{u"Even"_s};
    model().searchText = u"x"_s;
    model().manufacturerSearchText = u"y"_s;
    model().showAllPlugins = true;
    const PluginSortOrder order{{PluginSortKey::format, PluginSortDirection::reverse}};
    model().sortOrder = order;
    const bool trigger = *model().resetViewTrigger;

    model().resetView();
    m_system.clock.advance(100ms);
    EXPECT_TRUE(model().persistedSelections.isEmpty());
    EXPECT_TRUE(model().selectedFormats->isEmpty() && model().selectedManufacturers->isEmpty());
    EXPECT_TRUE(model().searchText->isEmpty() && model().manufacturerSearchText->isEmpty());
    EXPECT_FALSE(*model().showAllPlugins);
    EXPECT_NE(*model().resetViewTrigger, trigger);
    EXPECT_EQ(*model().sortOrder, order);
    EXPECT_EQ(*model().totalPluginCount, 30);
}

} // namespace orvanlite::test
