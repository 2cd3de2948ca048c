#pragma once

#include <string_view>

namespace orvanlite::platform {

class PropertyListCollector;

/// Passes the elements of an XML list to the collector if the list is written as the usual tools write it.
/// This is the fast path for nearly every file: a full parser takes longer than opening and reading the file.
///
/// Errors: false for anything else: references, comments, other encodings or attributes, and data that is no
///         list. Then a full parser decides, with a new collector.
[[nodiscard]] bool readPlainXml(std::string_view text, PropertyListCollector& collector);

} // namespace orvanlite::platform
