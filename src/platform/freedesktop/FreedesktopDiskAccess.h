#pragma once

#include "platform/FullDiskAccess.h"

#include <QString>

namespace orvanlite::platform {

/// Linux has no such restriction per application; what matters is whether administrator rights can be
/// obtained: as root, or with `pkexec` installed and an agent in the session that shows its password prompt.
class FreedesktopDiskAccess final : public FullDiskAccess {
public:
    /// `processFolder` is laid out like /proc.
    FreedesktopDiskAccess(bool isRoot, QString processFolder);

    [[nodiscard]] bool isGranted() const override;
    [[nodiscard]] QUrl settings() const override;

private:
    bool m_isRoot;
    QString m_processFolder;
};

} // namespace orvanlite::platform
