#pragma once

#include "model/PluginFormat.h"

#include <QSet>
#include <QString>

namespace orvanlite {

/// What a list of plugins is narrowed to. An empty member means no filter on that field, not an empty result.
struct PluginFilter {
    QString searchText{}; ///< part of name or manufacturer; "%" and "_" work as wildcards
    QSet<PluginFormat> formats{};
    QSet<QString> manufacturers{};
    QSet<QString> pluginKeys{};

    /// Whether a filter of the sidebar is set. The search and the keys are not set there.
    [[nodiscard]] bool hasSidebarFilters() const { return !formats.isEmpty() || !manufacturers.isEmpty(); }

    bool operator==(const PluginFilter&) const = default;
};

} // namespace orvanlite
