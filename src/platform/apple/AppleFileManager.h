#pragma once

#include "platform/posix/PosixFileManager.h"

namespace orvanlite::platform {

class ProcessLauncher;
struct SystemLayout;

/// Files are hidden by a file-system flag.
class AppleFileManager final : public PosixFileManager {
public:
    AppleFileManager(ProcessLauncher& processes, const SystemLayout& layout);

    void setHidden(const QString& path) override;

protected:
    void removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                              std::vector<DirectoryEntry>& entries) const override;

private:
    ProcessLauncher& m_processes;
    QString m_chflags; ///< the program that sets the flag
};

} // namespace orvanlite::platform
