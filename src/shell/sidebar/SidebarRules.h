#pragma once

#include "catalogue/PluginFilter.h"
#include "model/AudioPlugin.h"
#include "operations/BulkAction.h"

#include <QString>

namespace orvanlite {

// Only the filters of the sidebar affect these texts, not the search.

/// Label of an action on all filtered plugins, e.g. "Enable All VST3".
[[nodiscard]] QString enableDisableButtonLabel(BulkAction action, const PluginFilter& filter);

/// Text of the confirmation of such an action. `filtered` is all filtered plugins, enabled and disabled.
[[nodiscard]] QString sidebarWarningMessage(BulkAction action, const AudioPlugins& filtered,
                                            const PluginFilter& filter);

/// The filters in one line. Empty without filters.
[[nodiscard]] QString filterSummary(const PluginFilter& filter);

} // namespace orvanlite
