#pragma once

#include <functional>

class QObject;

namespace orvanlite::platform {

struct SystemLayout;

/// Makes this process the only one that uses the application folder, until it exits or is killed. Call it
/// before reading anything there.
/// Shape:   false when another instance is running; it has then shown its window. Always true on macOS, where
///          Launch Services does not start an application twice.
/// Errors:  std::runtime_error when the other instance cannot be reached or does not answer within two
///          seconds.
/// Effects: creates the folder and its lock file.
[[nodiscard]] bool becomeOnlyInstance(const SystemLayout& layout);

/// Calls the handler each time the application is started again while this process is the only instance.
void whenStartedAgain(const SystemLayout& layout, QObject* context, std::function<void()> handler);

} // namespace orvanlite::platform
