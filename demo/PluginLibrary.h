#pragma once

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite::demo {

/// Fills a sandbox with an invented studio's plugin folders: more than 1,500 plugins of all formats in
/// system, user and vendor folders, enabled and disabled, and the odd cases that real machines collect over
/// the years. Shape:   returns the number of plugins that a scan finds. The same at every call, apart from
/// the dates of last
///          use, which lie in the same distance before the moment of the call.
/// Errors:  std::logic_error for a layout without a root of its own, so that no real folder is ever filled;
///          FileError.
/// Effects: folders and files below the layout's root, which is expected to hold none of them yet.
int makePluginLibrary(const platform::SystemLayout& layout);

} // namespace orvanlite::demo
