#include "platform/OnlyProcess.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QByteArray>

#include <cerrno>

namespace orvanlite::platform {

bool becomeOnlyProcess(const QString& file)
{
    const QByteArray name = file.toUtf8();
    // Whoever can open a file can hold its lock. A start with sudo leaves one of root's, which must not shut
    // us out.
    const mode_t mode = ::geteuid() == 0 ? 0644 : 0600;
    int descriptor = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, mode);
    if (descriptor < 0)
        descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    // On purpose: never closed. The lock ends with the process, also when it is killed.
    return descriptor < 0 || ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

} // namespace orvanlite::platform
