#include "platform/StatusArea.h"

namespace orvanlite::platform {

void whenStatusAreaIsReady(QObject* /*context*/, std::function<void()> handler)
{
    handler(); // the menu bar is always there
}

bool clickOpensStatusMenu() { return true; }

} // namespace orvanlite::platform
