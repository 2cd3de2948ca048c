#include "platform/Platform.h"
#include "platform/freedesktop/FreedesktopFileManager.h"

namespace orvanlite::platform {

std::unique_ptr<FileManager> makeFileManager(const SystemLayout&)
{
    return std::make_unique<FreedesktopFileManager>();
}

} // namespace orvanlite::platform
