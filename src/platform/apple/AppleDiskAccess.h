#pragma once

#include "platform/FullDiskAccess.h"

namespace orvanlite::platform {

struct SystemLayout;

/// Without the permission, the system's database of permissions is itself unreadable.
class AppleDiskAccess final : public FullDiskAccess {
public:
    explicit AppleDiskAccess(const SystemLayout& layout)
        : m_layout(layout)
    {}

    [[nodiscard]] bool isGranted() const override;
    [[nodiscard]] QUrl settings() const override;

private:
    const SystemLayout& m_layout;
};

} // namespace orvanlite::platform
