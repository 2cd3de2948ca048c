#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace orvanlite::platform {

/// One text that is wanted from a property list whose root is a dictionary.
struct PropertyListField {
    /// Key in the root dictionary.
    QLatin1StringView key;
    /// Empty: the root's value itself is the text. Otherwise the root's value is a list of dictionaries, and the
    /// text is the value of this key in the first of them.
    QLatin1StringView keyInFirstDictionary = {};
};

/// The answers in the order of the wanted fields.
using PropertyListTexts = std::vector<std::optional<QString>>;

/// Reads a few texts from a property list in its XML or its binary form, without recursion.
///
/// Shape:  one answer per field. A missing key, a value of another type and (for a field in a first dictionary)
///         an empty list or a list that holds anything but dictionaries give an absent answer. Of equal keys the
///         last one counts.
/// Errors: nothing at all for data that are no well-formed property list with a dictionary as root: cut off,
///         empty, of another root type, with unknown elements, with numbers or dates that are none, or with counts,
///         references or offsets that lead outside.
/// Source: Apple's property list DTD (PropertyList-1.0.dtd); the binary form "bplist00" as described in the
///         comments of Core Foundation's CFBinaryPList.
[[nodiscard]] std::optional<PropertyListTexts> readPropertyList(QByteArrayView data,
                                                                std::span<const PropertyListField> wanted);

/// The two forms behind readPropertyList(), which tells them apart by the first eight bytes.
[[nodiscard]] std::optional<PropertyListTexts> readXmlPropertyList(QByteArrayView data,
                                                                   std::span<const PropertyListField> wanted);
[[nodiscard]] std::optional<PropertyListTexts>
readBinaryPropertyList(QByteArrayView data, std::span<const PropertyListField> wanted);

} // namespace orvanlite::platform
