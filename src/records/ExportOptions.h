#pragma once

#include "model/RawValue.h"

namespace orvanlite {

/// The raw value is the user's name for the format. What else belongs to it is in records/ReportFormat.h.
enum class ExportFormat { pdf, csv };

template <>
struct RawValueTable<ExportFormat> {
    static constexpr std::array<RawValueRow<ExportFormat>, 2> rows{{
        {ExportFormat::pdf, u"PDF"},
        {ExportFormat::csv, u"CSV"},
    }};
};

/// Sort key of a report. The raw value is also the column's title.
enum class ExportSortOption { name, manufacturer, format, status, version, lastUsed };

template <>
struct RawValueTable<ExportSortOption> {
    static constexpr std::array<RawValueRow<ExportSortOption>, 6> rows{{
        {ExportSortOption::name, u"Name"},
        {ExportSortOption::manufacturer, u"Manufacturer"},
        {ExportSortOption::format, u"Format"},
        {ExportSortOption::status, u"Status"},
        {ExportSortOption::version, u"Version"},
        {ExportSortOption::lastUsed, u"Last Used(Est.)"}, // on purpose without a space
    }};
};

} // namespace orvanlite
