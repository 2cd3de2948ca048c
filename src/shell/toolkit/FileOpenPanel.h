#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace orvanlite {

/// What may be opened.
struct OpenRequest {
    QString title;
    QString typeName; ///< of such files, e.g. "Profile"
    QString suffix;   ///< without the dot
};

/// Asks the user for one file to open.
class OpenPanel {
public:
    OpenPanel() = default;
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    virtual ~OpenPanel() = default;

    /// Does not wait. `chosen` gets the path, later and once; nothing is called when the user chooses none.
    virtual void ask(const OpenRequest& request, std::function<void(const QString& path)> chosen) = 0;
};

/// The system's open panel over the window of `context`. It opens in the folder that was opened from last.
class FileOpenPanel final : public OpenPanel {
public:
    FileOpenPanel(QWidget& context, QString folder);

    void ask(const OpenRequest& request, std::function<void(const QString& path)> chosen) override;

private:
    QWidget& m_context;
    QString m_folder;
};

} // namespace orvanlite
