#pragma once

#include <QString>
#include <QUrl>

#include <vector>

namespace orvanlite::platform {

struct RunningApplication {
    qint64 processId = 0;
    QString bundleIdentifier;
    QString bundlePath; ///< absolute, without a trailing slash
    bool operator==(const RunningApplication&) const = default;
};

/// Other applications: opening files and pages with them, and those that run from a bundle.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Opens a web page or a file (file URL) with the user's application for it. False when nothing could be
    /// started.
    virtual bool open(const QUrl& url) = 0;

    /// Applications of this user that run from an application bundle with an identifier.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;

    /// Starts the application bundle at the path; what comes of it is not told.
    virtual void openApplication(const QString& bundlePath) = 0;

    /// Asks the application to end, as its own "Quit" would.
    virtual void terminate(const RunningApplication& application) = 0;
};

} // namespace orvanlite::platform
