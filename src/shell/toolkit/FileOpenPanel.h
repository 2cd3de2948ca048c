#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace orvanlite {

/// The kind of file that may be opened.
struct OpenRequest {
    QString title;
    QString typeName; ///< display name of the file type, e.g. "Profile"
    QString suffix;   ///< without the dot
};

/// Asks the user for one file to open.
class OpenPanel {
public:
    OpenPanel() = default;
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    virtual ~OpenPanel() = default;

    /// Returns immediately. `chosen` runs once with the path, or not at all if the user cancels.
    virtual void ask(const OpenRequest& request, std::function<void(const QString& path)> chosen) = 0;
};

/// The system's open panel over the window of `context`. It starts in the folder of the last opened file.
class FileOpenPanel final : public OpenPanel {
public:
    FileOpenPanel(QWidget& context, QString folder);

    void ask(const OpenRequest& request, std::function<void(const QString& path)> chosen) override;

private:
    QWidget& m_context;
    QString m_folder;
};

} // namespace orvanlite
