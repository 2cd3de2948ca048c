#pragma once

#include <QByteArrayList>

namespace orvanlite::test {

[[nodiscard]] QByteArray bigEndian(quint64 number, int size);

/// A binary property list of encoded objects, valid or not, which refer to each other by index. The last one
/// is the root.
[[nodiscard]] QByteArray binaryPropertyList(const QByteArrayList& objects, int referenceSize = 1,
                                            int offsetSize = 2);

} // namespace orvanlite::test
