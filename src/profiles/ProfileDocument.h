#pragma once

#include "profiles/PluginProfile.h"

#include <exception>
#include <optional>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

class ProfileManager;

/// One profile as a file of its own, to carry it to another machine. Save and open panels work on `kExtension`.
struct ProfileDocument {
    static constexpr char kMimeType[] = "application/json";
    static constexpr char16_t kExtension[] = u"json";

    std::optional<PluginProfile> profile;

    /// Without content there is no profile, which is no error.
    /// Errors: JsonError.
    [[nodiscard]] static ProfileDocument decoded(const std::optional<QByteArray>& content);
    /// Indented, with its members in alphabetical order.
    /// Errors: std::runtime_error when there is no profile to write.
    [[nodiscard]] QByteArray encoded() const;
    /// What a save panel proposes, without an extension: the profile's name.
    [[nodiscard]] QString defaultFileName() const;
};

/// Writes the document to the place that the user has chosen. A failure goes to standard output alone.
void exportProfile(platform::FileManager& files, const ProfileDocument& document, const QString& path);
/// Imports the document that the user has chosen. A failure goes to standard output alone.
void importProfile(ProfileManager& manager, const QString& path);

/// For a save panel that fails by itself.
void reportFailedExport(const std::exception& failure);
/// For an open panel that ends with an error; an empty choice is none.
void reportCancelledImport(const std::exception& failure);

} // namespace orvanlite
