#pragma once

#include <QLatin1StringView>

#include <utility>
#include <vector>

namespace orvanlite {

enum class PluginSortKey { name, manufacturer, format, statusValue, versionValue, lastUsedValue };

enum class PluginSortDirection { forward, reverse };

struct PluginComparator {
    PluginSortKey key = PluginSortKey::name;
    PluginSortDirection order = PluginSortDirection::forward;
    bool operator==(const PluginComparator&) const = default;
};

/// Only the first comparator counts; an empty list sorts by name.
using PluginSortOrder = std::vector<PluginComparator>;

/// A catalogue column and a direction.
struct SqlSort {
    QLatin1StringView column;
    bool ascending = true;
    bool operator==(const SqlSort&) const = default;
};

[[nodiscard]] SqlSort sqlSortFromComparators(const PluginSortOrder& comparators);

} // namespace orvanlite
