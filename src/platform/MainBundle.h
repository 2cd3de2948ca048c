#pragma once

#include <QString>

#include <optional>

namespace orvanlite::platform {

class FileManager;

/// The application bundle of the running executable ("X.app/Contents/MacOS/executable").
class MainBundle {
public:
    /// `executablePath` is absolute with links resolved. Outside a bundle, the bundle path is the
    /// executable's folder, without info dictionary and resources.
    MainBundle(const FileManager& files, const QString& executablePath);

    /// Absolute path of the ".app" folder.
    [[nodiscard]] QString bundlePath() const { return m_bundlePath; }

    /// A string of "Contents/Info.plist"; empty for a missing file or key or another type. Read at each call.
    [[nodiscard]] std::optional<QString> infoText(const QString& key) const;

    /// Path of "Contents/Resources/{name}.{extension}", or nothing if there is no such file.
    [[nodiscard]] std::optional<QString> resource(const QString& name, const QString& extension) const;

private:
    const FileManager& m_files;
    QString m_bundlePath;
};

} // namespace orvanlite::platform
