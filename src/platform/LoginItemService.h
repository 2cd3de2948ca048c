#pragma once

#include <QString>

namespace orvanlite::platform {

/// Source: the cases of SMAppService.Status, with their numbers.
enum class LoginItemStatus { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

/// Registers an agent inside the main bundle to be started at login.
class LoginItemService {
public:
    LoginItemService() = default;
    LoginItemService(const LoginItemService&) = delete;
    LoginItemService& operator=(const LoginItemService&) = delete;
    virtual ~LoginItemService() = default;

    [[nodiscard]] virtual LoginItemStatus status(const QString& identifier) const = 0;

    /// Effects: the agent with this bundle identifier, at `bundlePath`, is started at every login from now
    /// on.
    /// Errors: FileError.
    virtual void registerItem(const QString& identifier, const QString& bundlePath) = 0;

    /// Errors: FileError, also when it was not registered.
    virtual void unregisterItem(const QString& identifier) = 0;
};

} // namespace orvanlite::platform
