#pragma once

#include "platform/FullDiskAccess.h"

#include <QString>

namespace orvanlite::platform {

/// No file is closed to an application here; what counts is whether administrator rights can be asked for: by root, and
/// where `pkexec` is installed and the session has an agent that shows its password prompt.
class FreedesktopDiskAccess final : public FullDiskAccess {
public:
    /// `isRoot` and the folder of the running processes, as Linux mounts it.
    FreedesktopDiskAccess(bool isRoot, QString processFolder);

    [[nodiscard]] bool isGranted() const override;
    [[nodiscard]] QUrl settings() const override;

private:
    bool m_isRoot;
    QString m_processFolder;
};

} // namespace orvanlite::platform
