#pragma once

#include "platform/freedesktop/root-runner/PluginPaths.h"

namespace orvanlite::root_runner {

/// The user who called pkexec, from PKEXEC_UID; without it, or without root's rights, the user running this
/// process. An unknown user has no home folder.
[[nodiscard]] Surroundings surroundingsOfCaller();

/// Drops or resets what the untrusted caller chose: open files, environment, umask, limits, timers. None of
/// it may stop a command half-way. Look up the caller first: this clears the environment.
void dropInheritedState();

/// Switches to the rights of the calling user for its lifetime, if ours differ. Aborts if that fails.
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
