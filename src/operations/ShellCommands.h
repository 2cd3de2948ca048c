#pragma once

#include "model/AudioPlugin.h"

#include <vector>

namespace orvanlite::platform {
struct SystemLayout;
}

/// The texts that a shell runs as root. Paths enter them through shellQuoted() alone.
namespace orvanlite {

/// The text as one word of a shell command: in single quotes, each `'` in it closed, double-quoted and reopened.
[[nodiscard]] QString shellQuoted(const QString& text);

/// AppleScript source that runs the command as root. On purpose the command is not escaped for the string literal
/// that holds it: a path with an apostrophe, a quotation mark or a backslash gives a script that does not compile,
/// and nothing is moved or deleted.
[[nodiscard]] QString administratorScript(const QString& command);

enum class ParentFolder { create, mustExist };

[[nodiscard]] QString moveCommand(const QString& source, const QString& destination, ParentFolder parent);

/// Appended to the move of an Audio Unit: empties the system's cache of Audio Units and ends its registrar, which
/// then reads the folders again. On purpose its closing "true" hides a failed move as well as a failed flush.
[[nodiscard]] QString audioUnitCacheFlush(const platform::SystemLayout& layout);

/// Deletes what is at the current paths and ends at the first failure.
[[nodiscard]] QString deletionCommand(const AudioPlugins& plugins);

/// One plugin of a batch and the path that its file goes to.
struct BatchItem {
    AudioPlugin plugin;
    QString source;
    QString destination;
};

/// The shell script that moves every item and counts the finished ones in the progress file.
/// Shape: lines joined by line feeds, without a final one. A failed line does not stop the next one: the counter
///        runs whether or not the move before it worked, and the exit status is that of the last line.
[[nodiscard]] QString batchScript(const std::vector<BatchItem>& items, const QString& progressFile);

/// AppleScript source that makes the script file executable and runs it as root.
[[nodiscard]] QString batchAppleScript(const QString& scriptFile);

} // namespace orvanlite
