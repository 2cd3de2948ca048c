#pragma once

#include <QString>

#include <memory>
#include <optional>

namespace orvanlite::platform {
class FileManager;
struct SystemLayout;
} // namespace orvanlite::platform

namespace orvanlite::demo {

enum class InfoForm { none, xml, binary };

/// A plugin bundle to write. Empty texts are left out of its property list.
struct Bundle {
    QString path; ///< absolute, with the extension
    InfoForm infoForm = InfoForm::xml;
    QString version = {};
    QString identifier = {};
    QString componentName = {}; ///< "Manufacturer: Plugin", as in Audio Units
    QString clapVendor = {};    ///< written to "clap.json"
    QString executable = {};    ///< name of the file in "Contents/MacOS"; empty for none
    std::optional<double> daysUnused = {};
};

/// Writes plugin files. Every path must be inside a sandbox root.
class BundleWriter final {
public:
    /// Errors: std::logic_error when the layout is not a sandbox.
    explicit BundleWriter(const platform::SystemLayout& layout);
    BundleWriter(const BundleWriter&) = delete;
    BundleWriter& operator=(const BundleWriter&) = delete;
    ~BundleWriter();

    void write(const Bundle& bundle);
    /// Writes a plain file and creates its parent folders.
    void writeFile(const QString& path, const QByteArray& content);
    void makeFolder(const QString& path);

private:
    const std::unique_ptr<platform::FileManager> m_files;
    const double m_now; ///< seconds since 1970
};

} // namespace orvanlite::demo
