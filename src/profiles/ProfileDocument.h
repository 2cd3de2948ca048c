#pragma once

#include "profiles/PluginProfile.h"

#include <exception>
#include <optional>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

class ProfileManager;

/// One profile as a separate file, e.g. to move it to another machine. Save and open panels use `kExtension`.
struct ProfileDocument {
    static constexpr char kMimeType[] = "application/json";
    static constexpr char16_t kExtension[] = u"json";

    std::optional<PluginProfile> profile;

    /// Without content the document has no profile.
    /// Errors: JsonError for invalid content.
    [[nodiscard]] static ProfileDocument decoded(const std::optional<QByteArray>& content);
    /// Indented, with members in alphabetical order.
    /// Errors: std::runtime_error without a profile.
    [[nodiscard]] QByteArray encoded() const;
    /// The save panel's proposal, without extension: the profile's name.
    [[nodiscard]] QString defaultFileName() const;
};

/// Writes the document to the chosen path. A failure is only printed to standard output.
void exportProfile(platform::FileManager& files, const ProfileDocument& document, const QString& path);
/// Imports the chosen document. A failure is only printed to standard output.
void importProfile(ProfileManager& manager, const QString& path);

/// For a failure of the save panel itself.
void reportFailedExport(const std::exception& failure);
/// For an open panel that ends with an error. An empty selection is not an error.
void reportCancelledImport(const std::exception& failure);

} // namespace orvanlite
