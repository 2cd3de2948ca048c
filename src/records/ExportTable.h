#pragma once

#include "model/AudioPlugin.h"
#include "records/ExportOptions.h"

#include <array>
#include <vector>

namespace orvanlite {

/// A column of a report. Its title is the raw value of the option that sorts by it.
struct ExportColumn {
    ExportSortOption option = ExportSortOption::name;
    double share = 0; ///< of the table's width; those of all columns add up to 1
    QString (*cellText)(const AudioPlugin& plugin, Date now) = nullptr;
};

inline constexpr std::size_t kExportColumnCount = allCases<ExportSortOption>.size();
using ExportColumns = std::array<ExportColumn, kExportColumnCount>;

/// All columns: the one that is sorted by first, the others in their own order.
[[nodiscard]] ExportColumns columnOrder(ExportSortOption first);

/// The width of each column of a table that is `totalWidth` wide.
[[nodiscard]] std::array<double, kExportColumnCount> calculateColumnWidths(const ExportColumns& columns,
                                                                           double totalWidth);

/// The rows of a report. They point into the list that was sorted.
using ExportRows = std::vector<const AudioPlugin*>;

/// The plugins in the order of the option, by name where it ties. Texts are compared in the user's language without
/// their case, versions too; the newest use comes first and what was never used last. What still ties keeps the order
/// of the list.
[[nodiscard]] ExportRows sortPlugins(const AudioPlugins& plugins, ExportSortOption option);

} // namespace orvanlite
