#include "platform/SingleInstance.h"

namespace orvanlite::platform {

// Launch Services brings the running application to the front.

bool becomeOnlyInstance(const SystemLayout& /*layout*/) { return true; }

void whenStartedAgain(const SystemLayout& /*layout*/, QObject* /*context*/, std::function<void()> /*handler*/)
{}

} // namespace orvanlite::platform
