#pragma once

#include <string_view>

namespace orvanlite::platform {

class PropertyListCollector;

/// Passes the elements of an XML list on to the collector if the list is written as the usual tools write it. This
/// is the short way for nearly every file: a full parser takes longer over a list than the system over opening and
/// reading it.
///
/// Errors: false for whatever is not known at sight: references, comments, other encodings, attributes, and all
///         that is no list. A full parser has to say what becomes of it, with a new collector.
[[nodiscard]] bool readPlainXml(std::string_view text, PropertyListCollector& collector);

} // namespace orvanlite::platform
