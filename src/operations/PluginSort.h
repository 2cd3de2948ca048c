#pragma once

#include <QLatin1StringView>

#include <utility>
#include <vector>

namespace orvanlite {

/// What a table column sorts by.
enum class PluginSortKey { name, manufacturer, format, statusValue, versionValue, lastUsedValue };

enum class PluginSortDirection { forward, reverse };

struct PluginComparator {
    PluginSortKey key = PluginSortKey::name;
    PluginSortDirection order = PluginSortDirection::forward;
    bool operator==(const PluginComparator&) const = default;
};

/// The first comparator counts, an empty list sorts by name.
using PluginSortOrder = std::vector<PluginComparator>;

/// A column of the catalogue and a direction.
struct SqlSort {
    QLatin1StringView column;
    bool ascending = true;
    bool operator==(const SqlSort&) const = default;
};

[[nodiscard]] SqlSort sqlSortFromComparators(const PluginSortOrder& comparators);

} // namespace orvanlite
