#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace orvanlite::platform {

/// One string requested from a property list whose root is a dictionary.
struct PropertyListField {
    /// Key in the root dictionary.
    QLatin1StringView key;
    /// Empty: the value in the root is the string. Otherwise it is an array of dictionaries, and the string
    /// is the value of this key in the first of them.
    QLatin1StringView keyInFirstDictionary = {};
};

/// The results in the order of the fields.
using PropertyListTexts = std::vector<std::optional<QString>>;

/// Reads a few strings from an XML or binary property list, without recursion.
///
/// Shape:  one result per field. It is absent for a missing key, for a value of another type and (for a field
///         in a first dictionary) for an array that is empty or has members other than dictionaries. The
///         last of several equal keys counts.
/// Errors: empty if the data is not a well-formed property list with a dictionary as root: truncated, empty,
///         with another root type, unknown elements, invalid numbers or dates, or with counts, references or
///         offsets out of range.
/// Source: Apple's property list DTD (PropertyList-1.0.dtd); the binary form "bplist00" as described in the
///         comments of Core Foundation's CFBinaryPList.
[[nodiscard]] std::optional<PropertyListTexts> readPropertyList(QByteArrayView data,
                                                                std::span<const PropertyListField> wanted);

/// The readers behind readPropertyList(), which distinguishes the formats by the first eight bytes.
[[nodiscard]] std::optional<PropertyListTexts> readXmlPropertyList(QByteArrayView data,
                                                                   std::span<const PropertyListField> wanted);
[[nodiscard]] std::optional<PropertyListTexts>
readBinaryPropertyList(QByteArrayView data, std::span<const PropertyListField> wanted);

} // namespace orvanlite::platform
