#pragma once

#include "platform/FileManager.h"
#include "records/ExportTable.h"
#include "records/SavePanel.h"

#include <QByteArray>

namespace orvanlite {

/// Everything specific to one report format.
struct ReportFormat {
    SaveRequest request;
    QString caption; ///< description shown when choosing the format
    platform::WriteMode writeMode = platform::WriteMode::inPlace;
    QByteArray (*generate)(const ExportRows& rows, const ExportColumns& columns, ExportSortOption sortBy,
                           Date now) = nullptr;
};

[[nodiscard]] ReportFormat reportFormat(ExportFormat format);

} // namespace orvanlite
