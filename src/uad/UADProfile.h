#pragma once

#include "uad/UADPluginAuth.h"

#include <optional>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

/// The plugin lines of a system profile, in file order; two lines of one name are two records.
/// Source: the text that the vendor's control panel writes, one "Name: status" a line below a heading.
[[nodiscard]] UADPluginAuths parsePluginAuthorizations(QStringView text);

/// The newest file of the folder whose name holds "UADSystemProfile" and ends in ".txt" in any case, so that a copy
/// with a number or a date in its name is found too. Nothing for a folder that cannot be listed.
[[nodiscard]] std::optional<QString> findProfileFile(const platform::FileManager& files,
                                                     const QString& directory);

/// The whole text of the file.
/// Errors: FileError when it cannot be read or is no UTF-8.
[[nodiscard]] QString readProfile(const platform::FileManager& files, const QString& path);

} // namespace orvanlite
