#include "records/ExportTable.h"

#include "model/TextOrder.h"

#include <algorithm>
#include <limits>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr ExportColumns kBaseOrder{{
    {ExportSortOption::status, 0.10,
     [](const AudioPlugin& plugin, Date /*now*/) { return plugin.statusValue(); }},
    {ExportSortOption::manufacturer, 0.22,
     [](const AudioPlugin& plugin, Date /*now*/) { return plugin.manufacturer; }},
    {ExportSortOption::name, 0.26, [](const AudioPlugin& plugin, Date /*now*/) { return plugin.name; }},
    {ExportSortOption::format, 0.12,
     [](const AudioPlugin& plugin, Date /*now*/) { return rawValue(plugin.format); }},
    {ExportSortOption::version, 0.14,
     [](const AudioPlugin& plugin, Date /*now*/) { return plugin.version.value_or(u"—"_s); }},
    {ExportSortOption::lastUsed, 0.16,
     [](const AudioPlugin& plugin, Date now) { return plugin.lastUsedValue(now); }},
}};

/// Returns a negative, zero or positive number.
using Comparison = int (*)(const AudioPlugin& left, const AudioPlugin& right);

int compareNames(const AudioPlugin& left, const AudioPlugin& right)
{
    return localizedCompare(left.name, right.name);
}

int compareFormats(const AudioPlugin& left, const AudioPlugin& right)
{
    return left.format == right.format ? 0 : localizedCompare(rawValue(left.format), rawValue(right.format));
}

int compareVersions(const AudioPlugin& left, const AudioPlugin& right)
{
    // On purpose as text: "10.0" comes before "9.0".
    return localizedCompare(left.version ? QStringView(*left.version) : QStringView(),
                            right.version ? QStringView(*right.version) : QStringView());
}

int compareUses(const AudioPlugin& left, const AudioPlugin& right)
{
    constexpr Date never{std::numeric_limits<double>::lowest()};
    const Date leftUse = left.lastUsed.value_or(never);
    const Date rightUse = right.lastUsed.value_or(never);
    return rightUse < leftUse ? -1 : leftUse < rightUse ? 1 : 0;
}

Comparison comparison(ExportSortOption option)
{
    switch (option) {
    case ExportSortOption::manufacturer:
        return [](const AudioPlugin& left, const AudioPlugin& right) {
            return localizedCompare(left.manufacturer, right.manufacturer);
        };
    case ExportSortOption::format:
        return &compareFormats;
    case ExportSortOption::status:
        return [](const AudioPlugin& left, const AudioPlugin& right) {
            return (left.isEnabled ? 0 : 1) - (right.isEnabled ? 0 : 1);
        };
    case ExportSortOption::version:
        return &compareVersions;
    case ExportSortOption::lastUsed:
        return &compareUses;
    case ExportSortOption::name:
        break;
    }
    return &compareNames;
}

} // namespace

ExportColumns columnOrder(ExportSortOption first)
{
    ExportColumns columns = kBaseOrder;
    std::stable_partition(columns.begin(), columns.end(),
                          [first](const ExportColumn& column) { return column.option == first; });
    return columns;
}

std::array<double, kExportColumnCount> calculateColumnWidths(const ExportColumns& columns, double totalWidth)
{
    std::array<double, kExportColumnCount> widths{};
    std::transform(columns.begin(), columns.end(), widths.begin(),
                   [totalWidth](const ExportColumn& column) { return column.share * totalWidth; });
    return widths;
}

ExportRows sortPlugins(const AudioPlugins& plugins, ExportSortOption option)
{
    ExportRows rows;
    rows.reserve(plugins.size());
    for (const AudioPlugin& plugin : plugins)
        rows.push_back(&plugin);
    const Comparison compare = comparison(option);
    std::stable_sort(rows.begin(), rows.end(), [compare](const AudioPlugin* left, const AudioPlugin* right) {
        int order = compare(*left, *right);
        if (order == 0 && compare != &compareNames)
            order = compareNames(*left, *right);
        return order < 0;
    });
    return rows;
}

} // namespace orvanlite
