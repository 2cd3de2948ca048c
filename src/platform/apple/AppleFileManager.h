#pragma once

#include "platform/posix/PosixFileManager.h"

namespace orvanlite::platform {

class ProcessLauncher;

/// A file is hidden by a flag of its own in the file system.
class AppleFileManager final : public PosixFileManager {
public:
    /// `chflags` is the absolute path of the program that sets the flag.
    AppleFileManager(ProcessLauncher& processes, QString chflags)
        : m_processes(processes)
        , m_chflags(std::move(chflags))
    {}

    void setHidden(const QString& path) override;

protected:
    void removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                              std::vector<DirectoryEntry>& entries) const override;

private:
    ProcessLauncher& m_processes;
    QString m_chflags;
};

} // namespace orvanlite::platform
