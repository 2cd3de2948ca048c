#pragma once

#include <QString>

#include <optional>

namespace orvanlite::platform {

class FileManager;

/// The application bundle that the running executable lies in ("X.app/Contents/MacOS/executable").
class MainBundle {
public:
    /// `executablePath` is absolute with links resolved. An executable outside a bundle is its own folder's
    /// bundle: it has no info dictionary and no resources.
    MainBundle(const FileManager& files, const QString& executablePath);

    /// Absolute path of the ".app" folder.
    [[nodiscard]] QString bundlePath() const { return m_bundlePath; }

    /// A text of "Contents/Info.plist"; nothing for a missing file, key or another type. Read at each call.
    [[nodiscard]] std::optional<QString> infoText(const QString& key) const;

    /// Path of "Contents/Resources/{name}.{extension}", or nothing if there is no such file.
    [[nodiscard]] std::optional<QString> resource(const QString& name, const QString& extension) const;

private:
    const FileManager& m_files;
    QString m_bundlePath;
};

} // namespace orvanlite::platform
