#pragma once

#include "platform/Workspace.h"

namespace orvanlite::platform {

class FileManager;
class ProcessLauncher;

/// Opens through the desktop's own tool, and finds running applications by the executables of the processes.
class FreedesktopWorkspace final : public Workspace {
public:
    FreedesktopWorkspace(const FileManager& files, ProcessLauncher& launcher)
        : m_files(files)
        , m_launcher(launcher)
    {}

    bool open(const QUrl& url) override;
    /// In ascending order of the process ids; a program that has forked is there once for each process.
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    void openApplication(const QString& bundlePath) override;
    void terminate(const RunningApplication& application) override;

private:
    const FileManager& m_files;
    ProcessLauncher& m_launcher;
};

} // namespace orvanlite::platform
