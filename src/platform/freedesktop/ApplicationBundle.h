#pragma once

#include <QString>

#include <optional>

namespace orvanlite::platform {

class FileManager;

/// "CFBundleIdentifier" of the bundle's "Info.plist".
[[nodiscard]] std::optional<QString> bundleIdentifier(const FileManager& files, const QString& bundlePath);

/// Path of the file in "Contents/MacOS" that "CFBundleExecutable" names; without that key, of the only file
/// there.
[[nodiscard]] std::optional<QString> bundleExecutable(const FileManager& files, const QString& bundlePath);

} // namespace orvanlite::platform
