#include "operations/PluginSort.h"

#include <array>

namespace orvanlite {

SqlSort sqlSortFromComparators(const PluginSortOrder& comparators)
{
    static constexpr std::array<std::pair<PluginSortKey, QLatin1StringView>, 6> columns{{
        {PluginSortKey::name, QLatin1StringView("name")},
        {PluginSortKey::manufacturer, QLatin1StringView("manufacturer")},
        {PluginSortKey::format, QLatin1StringView("format")},
        {PluginSortKey::statusValue, QLatin1StringView("isEnabled")},
        {PluginSortKey::versionValue, QLatin1StringView("version")},
        {PluginSortKey::lastUsedValue, QLatin1StringView("lastUsed")},
    }};
    SqlSort sort{columns.front().second, true};
    if (comparators.empty())
        return sort;
    const PluginComparator& first = comparators.front();
    sort.ascending = first.order == PluginSortDirection::forward;
    for (const auto& [key, column] : columns) {
        if (key == first.key)
            sort.column = column;
    }
    return sort;
}

} // namespace orvanlite
