#pragma once

#include "platform/SystemLayout.h"

#include <memory>

namespace orvanlite::platform {

class Appearance;
class Clock;
class DefaultsStore;
class FileManager;
class LoginItemService;
class MainBundle;
class NotificationCenter;
class ProcessLauncher;
class ScriptRunner;
class UserNotifications;
class Workspace;

/// References to every service of the system. Built once in main() and passed down through constructors; the
/// services outlive all their users.
struct Platform {
    const SystemLayout& layout;
    FileManager& files;
    ScriptRunner& scripts;
    ProcessLauncher& processes;
    DefaultsStore& defaults;
    NotificationCenter& notifications;
    LoginItemService& loginItems;
    Workspace& workspace;
    MainBundle& mainBundle;
    Appearance& appearance;
    UserNotifications& userNotifications;
    Clock& clock;
};

/// The target system's file manager alone, for code that needs no other service and no QCoreApplication.
[[nodiscard]] std::unique_ptr<FileManager> makeFileManager(const SystemLayout& layout);

/// How script commands get administrator rights.
enum class Elevation {
    ask,  ///< root directly, any other user through the system's password prompt
    none, ///< never ask; run commands as the current user (agent, demo, tests)
};

/// Owns the services of this system.
class PlatformServices {
public:
    PlatformServices() = default;
    PlatformServices(const PlatformServices&) = delete;
    PlatformServices& operator=(const PlatformServices&) = delete;
    virtual ~PlatformServices() = default;
    [[nodiscard]] virtual Platform platform() = 0;
};

/// The services of the target system. Needs a QCoreApplication.
[[nodiscard]] std::unique_ptr<PlatformServices> makePlatformServices(SystemLayout layout,
                                                                     Elevation elevation);

} // namespace orvanlite::platform
