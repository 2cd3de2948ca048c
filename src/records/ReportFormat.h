#pragma once

#include "platform/FileManager.h"
#include "records/ExportTable.h"
#include "records/SavePanel.h"

#include <QByteArray>

namespace orvanlite {

/// Everything that is particular to one format of report.
struct ReportFormat {
    SaveRequest request;
    QString caption; ///< what the user reads when picking the format
    platform::WriteMode writeMode = platform::WriteMode::inPlace;
    QByteArray (*generate)(const ExportRows& rows, const ExportColumns& columns, ExportSortOption sortBy,
                           Date now) = nullptr;
};

[[nodiscard]] ReportFormat reportFormat(ExportFormat format);

} // namespace orvanlite
