#pragma once

#include "platform/FullDiskAccess.h"

namespace orvanlite::platform {

/// No file is closed to an application here; what counts is whether administrator rights can be asked for: for root,
/// and where the system has its password prompt.
class FreedesktopDiskAccess final : public FullDiskAccess {
public:
    [[nodiscard]] bool isGranted() const override;
    [[nodiscard]] QUrl settings() const override;
};

} // namespace orvanlite::platform
