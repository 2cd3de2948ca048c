#pragma once

#include "model/Date.h"

#include <QString>

#include <optional>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

/// What the files of one plugin tell of it. No plugin code is loaded. "Contents/Info.plist" is read once,
/// when this is made.
///
/// Errors: none. A file that is missing or damaged costs only the answers that depend on it, and a plain file
///         in a bundle's place answers nothing.
class BundleMetadata {
public:
    enum class InfoKey { version, identifier };

    /// `path` is the bundle's own path. The file manager must outlive this object.
    BundleMetadata(const platform::FileManager& files, QString path);

    /// A text of the info dictionary.
    [[nodiscard]] const std::optional<QString>& extractInfoFromBundle(InfoKey key) const
    {
        return key == InfoKey::version ? m_version : m_identifier;
    }

    /// The maker, from the first source that answers: the audio components, the identifier, the CLAP
    /// description. Empty when none does. It may still be a word that stands for no maker.
    [[nodiscard]] QString extractManufacturer() const;
    /// "Maker" of the first component's name "Maker: Plugin".
    [[nodiscard]] std::optional<QString> extractManufacturerFromAudioComponents() const;
    /// The vendor in "clap.json".
    [[nodiscard]] std::optional<QString> extractManufacturerFromCLAP() const;

    /// When the executable was last accessed: "Contents/MacOS/{name}", or else the first file that the
    /// listing of that folder gives.
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
