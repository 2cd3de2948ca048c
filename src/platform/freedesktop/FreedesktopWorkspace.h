#pragma once

#include "platform/Workspace.h"

namespace orvanlite::platform {

class FileManager;
class ProcessLauncher;

/// Opens URLs with xdg-open and finds running applications by the executables of processes.
class FreedesktopWorkspace final : public Workspace {
public:
    FreedesktopWorkspace(const FileManager& files, ProcessLauncher& launcher)
        : m_files(files)
        , m_launcher(launcher)
    {}

    bool open(const QUrl& url) override;
    /// In ascending order of process ids; a program that has forked is listed once per process.
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    void openApplication(const QString& bundlePath) override;
    void terminate(const RunningApplication& application) override;

private:
    const FileManager& m_files;
    ProcessLauncher& m_launcher;
};

} // namespace orvanlite::platform
