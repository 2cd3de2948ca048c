#pragma once

#include "model/AudioPlugin.h"
#include "records/ExportOptions.h"

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class SavePanel;

/// Reports of all plugins that it is given: asks where to save, writes the file there and opens it with the user's
/// application for it; the column that is sorted by comes first.
/// Errors: none. A panel that is cancelled ends it; on purpose a failed write is dropped, and the file opened all the
///         same.
class PDFExporter final {
public:
    PDFExporter() = delete;

    /// What `platform` refers to outlives the panel.
    static void exportPlugins(AudioPlugins plugins, ExportFormat format, ExportSortOption sortBy,
                              SavePanel& panel, const platform::Platform& platform);
};

} // namespace orvanlite
