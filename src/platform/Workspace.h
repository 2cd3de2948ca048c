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

/// Other applications: opens files and pages with them and lists those running from a bundle.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Opens a web page or a file (file URL) in the user's default application. False when nothing could be
    /// started.
    virtual bool open(const QUrl& url) = 0;

    /// The user's applications that run from a bundle with an identifier.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;

    /// Starts the application bundle at the path; failures are not reported.
    virtual void openApplication(const QString& bundlePath) = 0;

    /// Asks the application to quit.
    virtual void terminate(const RunningApplication& application) = 0;
};

} // namespace orvanlite::platform
