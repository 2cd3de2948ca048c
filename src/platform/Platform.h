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

/// References to every service of the system. Built once in main() and handed down through constructors; what it
/// refers to outlives every user of it.
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

/// The file system of the system that this was built for, on its own: for uses that need nothing else and no
/// QCoreApplication.
[[nodiscard]] std::unique_ptr<FileManager> makeFileManager(const SystemLayout& layout);

/// How the commands of scripts get administrator rights.
enum class Elevation {
    ask,  ///< as the system does it: root directly, anyone else after the system's password prompt
    none, ///< never ask, run the command as the user who runs us (the demo and the tests)
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

/// The services of the system that this was built for. Needs a QCoreApplication.
[[nodiscard]] std::unique_ptr<PlatformServices> makePlatformServices(SystemLayout layout,
                                                                     Elevation elevation);

} // namespace orvanlite::platform
