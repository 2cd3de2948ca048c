#include "platform/Compositing.h"

namespace orvanlite::platform {

bool blendsWindowsOnX11() { return false; }

} // namespace orvanlite::platform
