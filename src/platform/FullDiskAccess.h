#pragma once

#include <QUrl>

#include <memory>

namespace orvanlite::platform {

struct SystemLayout;

/// Whether the system lets the application at the plugins of all users, and where its user grants that.
class FullDiskAccess {
public:
    FullDiskAccess() = default;
    FullDiskAccess(const FullDiskAccess&) = delete;
    FullDiskAccess& operator=(const FullDiskAccess&) = delete;
    virtual ~FullDiskAccess() = default;

    /// Asked anew at each call: the user may grant it meanwhile.
    [[nodiscard]] virtual bool isGranted() const = 0;
    /// The place in the system's settings, or a page that helps.
    [[nodiscard]] virtual QUrl settings() const = 0;
};

/// That of the system that this was built for.
[[nodiscard]] std::unique_ptr<FullDiskAccess> makeFullDiskAccess(const SystemLayout& layout);

} // namespace orvanlite::platform
