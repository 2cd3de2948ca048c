#pragma once

#include "platform/freedesktop/root-runner/PluginPaths.h"

namespace orvanlite::root_runner {

/// Removes a file, a link or a folder with all it holds, as far as possible; nothing is no failure.
/// Errors: Failure, the first one.
void removeTree(const Descriptor& folder, const std::string& name);

/// Removes what a folder holds but for names with a leading dot, as `rm -rf folder/*` does.
void removeVisibleEntries(const Descriptor& folder);

/// Opens a folder that we have just made with mode 0700. Others may have put something else in its place since.
/// Errors: Failure if it is not empty and ours alone.
[[nodiscard]] Descriptor openNewFolder(const Descriptor& parent, const std::string& name);

/// Moves to a name, in place of a file or an empty folder there, as rename() does; also to another file system, where
/// the copy has mode, owner and times of the original and appears as a whole.
/// Errors: Failure.
void moveTree(const Entry& source, const Entry& destination);

} // namespace orvanlite::root_runner
