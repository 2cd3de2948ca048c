#pragma once

#include <QUrl>

#include <memory>

namespace orvanlite::platform {

struct SystemLayout;

/// Whether the application may access the plugins of all users, and where the user grants that access.
class FullDiskAccess {
public:
    FullDiskAccess() = default;
    FullDiskAccess(const FullDiskAccess&) = delete;
    FullDiskAccess& operator=(const FullDiskAccess&) = delete;
    virtual ~FullDiskAccess() = default;

    /// Queried at each call, as the user may grant it at any time.
    [[nodiscard]] virtual bool isGranted() const = 0;
    /// Link to the page in the system's settings, or to a help page.
    [[nodiscard]] virtual QUrl settings() const = 0;
};

/// The implementation for the target system.
[[nodiscard]] std::unique_ptr<FullDiskAccess> makeFullDiskAccess(const SystemLayout& layout);

} // namespace orvanlite::platform
