#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"
#include "operations/BulkAction.h"

#include <optional>

namespace orvanlite {

/// A bulk action waiting for confirmation. Cancelling keeps both members until the next request.
struct BulkConfirmation {
    Observable<bool> isShowing{false};
    std::optional<BulkAction> pendingAction;
    AudioPlugins pendingPlugins;
};

} // namespace orvanlite
