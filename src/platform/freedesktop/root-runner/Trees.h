#pragma once

#include "platform/freedesktop/root-runner/PluginPaths.h"

namespace orvanlite::root_runner {

/// Removes a file, a link or a folder with its contents, as far as possible; a missing one is not a failure.
/// Errors: the first Failure.
void removeTree(const Descriptor& folder, const std::string& name);

/// Removes the contents of a folder except names with a leading dot, like `rm -rf folder/*`.
void removeVisibleEntries(const Descriptor& folder);

/// Opens a folder that was just created with mode 0700. Others may have replaced it since.
/// Errors: Failure unless it is empty and only we can access it.
[[nodiscard]] Descriptor openNewFolder(const Descriptor& parent, const std::string& name);

/// Moves, replacing a file or an empty folder like rename(). On another file system the copy keeps mode,
/// owner and times and appears only when complete.
/// Errors: Failure.
void moveTree(const Entry& source, const Entry& destination);

} // namespace orvanlite::root_runner
