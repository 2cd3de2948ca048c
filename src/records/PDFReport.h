#pragma once

#include "records/ExportTable.h"

#include <QByteArray>

namespace orvanlite {

/// The report as a PDF document on US Letter pages, with embedded fonts and searchable, copyable text.
/// Shape:  title, summary line and table on the first page, only the table on the others. Without rows, one
///         page with the table heading.
/// Errors: empty when the document cannot be created.
[[nodiscard]] QByteArray generatePDF(const ExportRows& rows, const ExportColumns& columns,
                                     ExportSortOption sortBy, Date now);

} // namespace orvanlite
