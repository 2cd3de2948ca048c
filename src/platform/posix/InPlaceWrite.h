#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvanlite::platform {

class Descriptor;

/// Overwrites an open regular file of `oldSize` bytes such that a failure and a killed process leave either the old or the
/// new content. On purpose without a temporary file: users link the file from elsewhere,
/// and it stays the same file.
///
/// Space is reserved before anything is overwritten. After a failure the overwritten part of `old` is written back;
/// without `old` it is lost.
/// Errors: FileError with the path.
void overwriteInPlace(const Descriptor& file, const QByteArray& content, qint64 oldSize,
                      const std::optional<QByteArray>& old, const QString& path);

} // namespace orvanlite::platform
