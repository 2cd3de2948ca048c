#pragma once

#include "catalogue/PluginFilter.h"
#include "model/AudioPlugin.h"
#include "operations/BulkAction.h"

#include <QString>

namespace orvanlite {

// Of a filter, only what the sidebar sets counts here: the search changes none of these texts.

/// What an action on everything that the filters match is called, e.g. "Enable All VST3".
[[nodiscard]] QString enableDisableButtonLabel(BulkAction action, const PluginFilter& filter);

/// What is said before such an action. `filtered` is everything that the filters match, in both states.
[[nodiscard]] QString sidebarWarningMessage(BulkAction action, const AudioPlugins& filtered,
                                            const PluginFilter& filter);

/// The filters in one line. Empty without filters.
[[nodiscard]] QString filterSummary(const PluginFilter& filter);

} // namespace orvanlite
