#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"
#include "operations/BulkAction.h"

#include <optional>

namespace orvanlite {

/// A bulk action that waits for the user's confirmation. Cancelling leaves the action and its list as they are,
/// until the next request overwrites them.
struct BulkConfirmation {
    Observable<bool> isShowing{false};
    std::optional<BulkAction> pendingAction;
    AudioPlugins pendingPlugins;
};

} // namespace orvanlite
