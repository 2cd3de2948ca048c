#pragma once

#include <QByteArray>
#include <QString>

#include <utility>

namespace orvanlite::demo {

/// A binary property list with these members and, unless the name is empty, a list of one audio component.
[[nodiscard]] QByteArray binaryInfoPlist(const QList<std::pair<QString, QString>>& members,
                                         const QString& componentName = {});

} // namespace orvanlite::demo
