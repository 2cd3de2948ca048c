#include "records/ReportFormat.h"

#include "records/CSVReport.h"
#include "records/PDFReport.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

ReportFormat reportFormat(ExportFormat format)
{
    switch (format) {
    case ExportFormat::pdf:
        return {
            .request = {u"Export Plugins as PDF"_s, u"Orvanlite_Plugins.pdf"_s, u"PDF document"_s, u"pdf"_s},
            .caption = u"The selected sort column will appear first in the PDF."_s,
            .writeMode = platform::WriteMode::inPlace,
            .generate = &generatePDF};
    case ExportFormat::csv:
        return {.request = {u"Export Plugins as CSV"_s, u"Orvanlite_Plugins.csv"_s, u"Comma-separated text"_s,
                            u"csv"_s},
                .caption = u"Columns will be ordered with the selected sort column first."_s,
                .writeMode = platform::WriteMode::replaceFile,
                .generate = [](const ExportRows& rows, const ExportColumns& columns,
                               ExportSortOption /*sortBy*/,
                               Date now) { return generateCSV(rows, columns, now); }};
    }
    Q_UNREACHABLE();
}

} // namespace orvanlite
