#pragma once

#include "uad/UADPluginAuth.h"

#include <optional>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

/// The plugin lines of a system profile, in file order; two lines with the same name are two records.
/// Source: the text written by the manufacturer's control panel, one "Name: status" per line below a heading.
[[nodiscard]] UADPluginAuths parsePluginAuthorizations(QStringView text);

/// The newest file in the folder whose name contains "UADSystemProfile" and ends in ".txt"
/// (case-insensitive), so that copies with a number or date in the name are found too. Nothing for a folder
/// that cannot be listed.
[[nodiscard]] std::optional<QString> findProfileFile(const platform::FileManager& files,
                                                     const QString& directory);

/// Errors: FileError when the file cannot be read or is not valid UTF-8.
[[nodiscard]] QString readProfile(const platform::FileManager& files, const QString& path);

} // namespace orvanlite
