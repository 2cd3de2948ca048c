#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"

namespace orvanlite {

/// The rows of the catalogue that the views work on.
struct CatalogueRows {
    /// The whole catalogue, unfiltered, sorted by name. Empty until a scan or a full reload.
    Observable<AudioPlugins> plugins;
    /// The rows loaded so far for the current filter and sort.
    Observable<AudioPlugins> displayedPlugins;
};

} // namespace orvanlite
