#pragma once

#include "records/ExportTable.h"

#include <QByteArray>

namespace orvanlite {

/// The report as CSV.
/// Shape: UTF-8 without a byte-order mark; a header line, then one line per row. Every cell is in double
///        quotes, with embedded quotes doubled. Lines are separated by a line feed, without a trailing one.
[[nodiscard]] QByteArray generateCSV(const ExportRows& rows, const ExportColumns& columns, Date now);

} // namespace orvanlite
