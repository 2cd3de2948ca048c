#pragma once

#include <QByteArrayList>
#include <QString>

#include <utility>

namespace orvanlite::test {

/// The number in this many bytes, the most significant one first.
[[nodiscard]] QByteArray bigEndian(quint64 number, int size);

/// A property list in the binary form, sound or damaged: objects in their coded form, which refer to each other by
/// their numbers. The last one is the root.
[[nodiscard]] QByteArray binaryPropertyList(const QByteArrayList& objects, int referenceSize = 1,
                                            int offsetSize = 2);

/// A binary property list with these members in its root dictionary and, unless it is empty, a list of one
/// audio component of this name.
[[nodiscard]] QByteArray binaryInfoPlist(const QList<std::pair<QString, QString>>& members,
                                         const QString& componentName = {});

} // namespace orvanlite::test
