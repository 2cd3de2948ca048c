#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvanlite::platform {

class Descriptor;

/// Overwrites an open regular file of `oldSize` bytes such that a failure leaves either the old or the new
/// content. On purpose without a temporary file: users link the file from elsewhere, and it stays the same
/// file.
///
/// On Linux a kill of this process alone does so too. With its whole group, and on other systems, the file
/// can be left with a part of each.
///
/// Space is reserved before anything is overwritten. After a failure the overwritten part of `old` is written
/// back; without `old` it is lost.
/// Errors: FileError with the path.
void overwriteInPlace(const Descriptor& file, const QByteArray& content, qint64 oldSize,
                      const std::optional<QByteArray>& old, const QString& path);

} // namespace orvanlite::platform
