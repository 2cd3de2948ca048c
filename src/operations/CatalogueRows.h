#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"

namespace orvanlite {

/// The rows of the catalogue that the views work on.
struct CatalogueRows {
    /// The whole catalogue, unfiltered, by name. Empty until a scan or a reload of everything has run.
    Observable<AudioPlugins> plugins;
    /// The rows loaded so far for the filter and the sort.
    Observable<AudioPlugins> displayedPlugins;
};

} // namespace orvanlite
