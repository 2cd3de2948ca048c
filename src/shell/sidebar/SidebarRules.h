#pragma once

#include "model/AudioPlugin.h"
#include "operations/BulkAction.h"

#include <QSet>
#include <QString>

namespace orvanlite {

/// The filters that the sidebar sets.
struct SidebarFilter {
    QSet<PluginFormat> formats;
    QSet<QString> manufacturers;

    [[nodiscard]] bool isEmpty() const { return formats.isEmpty() && manufacturers.isEmpty(); }
};

/// What an action on everything that the filters match is called, e.g. "Enable All VST3".
[[nodiscard]] QString enableDisableButtonLabel(BulkAction action, const SidebarFilter& filter);

/// What is said before such an action. `filtered` is everything that the filters match, in both states.
[[nodiscard]] QString sidebarWarningMessage(BulkAction action, const AudioPlugins& filtered,
                                            const SidebarFilter& filter);

/// The filters in one line. Empty without filters.
[[nodiscard]] QString filterSummary(const SidebarFilter& filter);

} // namespace orvanlite
