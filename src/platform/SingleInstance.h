#pragma once

#include <functional>

class QObject;

namespace orvanlite::platform {

struct SystemLayout;

/// Makes this process the only one that works on the application folder, until it ends in whatever way. To be called
/// before anything there is read.
/// Shape:   false when another process is the one; it has been asked to show its window, and did. Always true on
///          macOS, where the system starts no application twice.
/// Errors:  std::runtime_error when the other process cannot be asked or does not answer within two seconds.
/// Effects: creates the folder and its lock file.
[[nodiscard]] bool becomeOnlyInstance(const SystemLayout& layout);

/// Calls the handler each time the application is started again while this process is the only instance.
void whenStartedAgain(const SystemLayout& layout, QObject* context, std::function<void()> handler);

} // namespace orvanlite::platform
