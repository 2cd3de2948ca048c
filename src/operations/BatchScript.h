#pragma once

#include "model/AudioPlugin.h"

#include <vector>

namespace orvanlite {

/// One plugin of a batch with the place that its file goes to.
struct BatchItem {
    AudioPlugin plugin;
    QString source;
    QString destination;
};

/// The shell script that moves every item and counts in the progress file how many it has done.
/// Shape:  lines joined by line feeds, without one at the end. No line stops the next one: the counter runs whether
///         or not the move before it worked, and the exit status is that of the last line.
[[nodiscard]] QString batchScript(const std::vector<BatchItem>& items, const QString& progressFile);

/// The AppleScript source that makes the script file executable and runs it as root.
[[nodiscard]] QString batchAppleScript(const QString& scriptFile);

} // namespace orvanlite
