#include "records/CSVReport.h"

namespace orvanlite {

namespace {

void appendCell(QByteArray& csv, const QString& text, bool isFirst)
{
    QByteArray cell = text.toUtf8();
    if (cell.contains('"'))
        cell.replace("\"", "\"\"");
    csv.append(isFirst ? "\"" : ",\"").append(cell).append('"');
}

} // namespace

QByteArray generateCSV(const ExportRows& rows, const ExportColumns& columns, Date now)
{
    constexpr qsizetype kUsualLine = 96;
    QByteArray csv;
    csv.reserve(kUsualLine * (static_cast<qsizetype>(rows.size()) + 1));
    for (const ExportColumn& column : columns)
        appendCell(csv, rawValue(column.option), &column == &columns.front());
    for (const AudioPlugin* plugin : rows) {
        csv.append('\n');
        for (const ExportColumn& column : columns)
            appendCell(csv, column.cellText(*plugin, now), &column == &columns.front());
    }
    return csv;
}

} // namespace orvanlite
