#pragma once

#include "model/Date.h"

#include <QString>

#include <optional>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

/// Metadata from the files of one plugin. No plugin code is loaded. "Contents/Info.plist" is read once, in
/// the constructor.
///
/// Errors: none. A missing or damaged file only empties the values that depend on it; a plain file instead of
///         a bundle has no values.
class BundleMetadata {
public:
    enum class InfoKey { version, identifier };

    /// `path` is the bundle's path. The file manager must outlive this object.
    BundleMetadata(const platform::FileManager& files, QString path);

    /// A string from the info dictionary.
    [[nodiscard]] const std::optional<QString>& extractInfoFromBundle(InfoKey key) const
    {
        return key == InfoKey::version ? m_version : m_identifier;
    }

    /// The manufacturer from the first source that has one: audio components, identifier, CLAP manifest.
    /// Empty when none has. May be a placeholder such as "yourcompany".
    [[nodiscard]] QString extractManufacturer() const;
    /// "Manufacturer" in the first component's name, "Manufacturer: Plugin".
    [[nodiscard]] std::optional<QString> extractManufacturerFromAudioComponents() const;
    /// The vendor in "clap.json".
    [[nodiscard]] std::optional<QString> extractManufacturerFromCLAP() const;

    /// Last access of the executable: "Contents/MacOS/{name}", otherwise the first file listed in that
    /// folder.
    [[nodiscard]] std::optional<Date> extractLastUsed(const QString& name) const;

private:
    [[nodiscard]] std::optional<QString> manufacturerFromIdentifier() const;

    const platform::FileManager& m_files;
    QString m_path;
    std::optional<QString> m_version;
    std::optional<QString> m_identifier;
    std::optional<QString> m_componentName;
};

} // namespace orvanlite
