#pragma once

#include <QByteArrayList>
#include <QString>

#include <utility>

namespace orvanlite::test {

[[nodiscard]] QByteArray bigEndian(quint64 number, int size);

/// A binary property list of encoded objects, valid or not, which refer to each other by index. The last one is the
/// root.
[[nodiscard]] QByteArray binaryPropertyList(const QByteArrayList& objects, int referenceSize = 1,
                                            int offsetSize = 2);

/// A binary property list with these members and, unless the name is empty, a list of one audio component.
[[nodiscard]] QByteArray binaryInfoPlist(const QList<std::pair<QString, QString>>& members,
                                         const QString& componentName = {});

} // namespace orvanlite::test
