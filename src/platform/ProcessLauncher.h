#pragma once

#include <QString>
#include <QStringList>

namespace orvanlite::platform {

/// Starts programs without waiting for them.
class ProcessLauncher {
public:
    ProcessLauncher() = default;
    ProcessLauncher(const ProcessLauncher&) = delete;
    ProcessLauncher& operator=(const ProcessLauncher&) = delete;
    virtual ~ProcessLauncher() = default;

    /// Starts the program and returns at once; its exit status is ignored.
    /// Errors: FileError when it cannot be started.
    virtual void start(const QString& program, const QStringList& arguments) = 0;
};

} // namespace orvanlite::platform
