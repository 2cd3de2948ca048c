#pragma once

#include "platform/freedesktop/root-runner/PluginPaths.h"

namespace orvanlite::root_runner {

/// The user on whose behalf root was asked, as the password prompt tells in PKEXEC_UID. Without it, or without root's
/// rights, whoever runs us. A user that the system does not know has no home folder.
[[nodiscard]] Surroundings surroundingsOfCaller();

/// Whoever starts us chooses what we inherit: open files, environment, umask, limits, timers. None of it may stop a
/// command half-way. The caller is asked for before.
void leaveInheritance();

/// Takes the rights of the calling user for its lifetime, if we have others. Ends the process if that fails.
class AsCallingUser {
public:
    explicit AsCallingUser(const Surroundings& surroundings);
    AsCallingUser(const AsCallingUser&) = delete;
    AsCallingUser& operator=(const AsCallingUser&) = delete;
    ~AsCallingUser();

private:
    bool m_switches;
};

/// Reads to the end. Errors: Failure; EFBIG beyond 256 MiB.
[[nodiscard]] std::string readAll(const Descriptor& file);

} // namespace orvanlite::root_runner
