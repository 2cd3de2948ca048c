#pragma once

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite::demo {

/// Fills a sandbox with the plugin folders of an invented studio: more than 1,500 plugins of all formats in
/// system, user and manufacturer folders, enabled and disabled, and the odd cases that real machines collect
/// over the years.
/// Shape:   returns the number of plugins that a scan finds. Every call creates the same library, except that
///          dates of last use are relative to the time of the call.
/// Errors:  std::logic_error for a layout that is not a sandbox, so that no real folder is ever filled;
///          FileError.
/// Effects: folders and files below the layout's root, which must not exist yet.
int makePluginLibrary(const platform::SystemLayout& layout);

} // namespace orvanlite::demo
