#pragma once

#include "records/ExportTable.h"

#include <QByteArray>

namespace orvanlite {

/// The report as comma-separated text.
/// Shape: UTF-8 without a byte-order mark; a line of titles, then one line a row, each cell in double quotes and its
///        own ones doubled. Lines are joined by a line feed, with none behind the last.
[[nodiscard]] QByteArray generateCSV(const ExportRows& rows, const ExportColumns& columns, Date now);

} // namespace orvanlite
