#include "operations/PluginSort.h"

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(PluginSortTest, OnlyTheFirstComparatorReachesTheCatalogue)
{
    using enum PluginSortKey;
    constexpr auto forward = PluginSortDirection::forward;
    constexpr auto reverse = PluginSortDirection::reverse;
    const struct {
        PluginSortOrder order;
        SqlSort wanted;
    } rows[] = {
        {{}, {"name"_L1, true}},
        {{{name, reverse}}, {"name"_L1, false}},
        {{{manufacturer, forward}, {name, reverse}}, {"manufacturer"_L1, true}},
        {{{format, reverse}, {lastUsedValue, forward}}, {"format"_L1, false}},
        {{{statusValue, forward}}, {"isEnabled"_L1, true}},
        {{{versionValue, reverse}}, {"version"_L1, false}},
        {{{lastUsedValue, forward}}, {"lastUsed"_L1, true}},
    };
    for (const auto& row : rows) {
        const SqlSort sort = sqlSortFromComparators(row.order);
        EXPECT_EQ(sort.column, row.wanted.column);
        EXPECT_EQ(sort.ascending, row.wanted.ascending) << row.wanted.column.data();
    }
}

} // namespace orvanlite::test
