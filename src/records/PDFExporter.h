#pragma once

#include "model/AudioPlugin.h"
#include "records/ExportOptions.h"

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class SavePanel;

/// Exports a report of the plugins: asks for a file name, writes the file and opens it with the user's
/// default application. The sort column comes first.
/// Errors: none. Nothing happens if the panel is cancelled. On purpose: a failed write is ignored, and the
///         file is opened anyway.
class PDFExporter final {
public:
    PDFExporter() = delete;

    /// The services in `platform` outlive the panel.
    static void exportPlugins(AudioPlugins plugins, ExportFormat format, ExportSortOption sortBy,
                              SavePanel& panel, const platform::Platform& platform);
};

} // namespace orvanlite
