#include "platform/OnlyProcess.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace orvanlite::platform {

bool becomeOnlyProcess(const QString& file)
{
    const int descriptor =
        ::open(file.toUtf8().constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    // On purpose: never closed. The lock ends with the process, also when it is killed.
    return descriptor < 0 || ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

} // namespace orvanlite::platform
