#pragma once

#include "records/ExportTable.h"

#include <QByteArray>

namespace orvanlite {

/// The report as a PDF document on US Letter pages, with its fonts in it and every text to be searched and copied.
/// Shape:  title, line of summary and table on the first page, the table alone on the others; no rows leave the
///         first page with its heading.
/// Errors: empty when no document can be made.
[[nodiscard]] QByteArray generatePDF(const ExportRows& rows, const ExportColumns& columns,
                                     ExportSortOption sortBy, Date now);

} // namespace orvanlite
