#include "operations/PluginSort.h"

namespace orvanlite {

namespace {

QLatin1StringView sqlColumn(PluginSortKey key)
{
    switch (key) {
    case PluginSortKey::manufacturer:
        return QLatin1StringView("manufacturer");
    case PluginSortKey::format:
        return QLatin1StringView("format");
    case PluginSortKey::statusValue:
        return QLatin1StringView("isEnabled");
    case PluginSortKey::versionValue:
        return QLatin1StringView("version");
    case PluginSortKey::lastUsedValue:
        return QLatin1StringView("lastUsed");
    case PluginSortKey::name:
        break;
    }
    return QLatin1StringView("name");
}

} // namespace

SqlSort sqlSortFromComparators(const PluginSortOrder& comparators)
{
    const PluginComparator first = comparators.empty() ? PluginComparator{} : comparators.front();
    return {sqlColumn(first.key), first.order == PluginSortDirection::forward};
}

} // namespace orvanlite
