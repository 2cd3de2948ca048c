#pragma once

#include "model/AudioPlugin.h"
#include "records/ExportOptions.h"

#include <array>
#include <vector>

namespace orvanlite {

/// A column of a report. Its title is the raw value of `option`.
struct ExportColumn {
    ExportSortOption option = ExportSortOption::name;
    double share = 0; ///< of the table's width; all shares add up to 1
    QString (*cellText)(const AudioPlugin& plugin, Date now) = nullptr;
};

inline constexpr std::size_t kExportColumnCount = allCases<ExportSortOption>.size();
using ExportColumns = std::array<ExportColumn, kExportColumnCount>;

/// All columns: the sort column first, then the others in default order.
[[nodiscard]] ExportColumns columnOrder(ExportSortOption first);

/// The width of each column, for a table of width `totalWidth`.
[[nodiscard]] std::array<double, kExportColumnCount> calculateColumnWidths(const ExportColumns& columns,
                                                                           double totalWidth);

/// The rows of a report: pointers into the list passed to sortPlugins().
using ExportRows = std::vector<const AudioPlugin*>;

/// The plugins sorted by the option, then by name; stable. Texts, including versions, are compared
/// case-insensitively in the user's locale. Most recently used comes first, never used last.
[[nodiscard]] ExportRows sortPlugins(const AudioPlugins& plugins, ExportSortOption option);

} // namespace orvanlite
