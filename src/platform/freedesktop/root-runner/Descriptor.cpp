#include "platform/freedesktop/root-runner/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace orvanlite::root_runner {

void fail(int number) { throw Failure{number, std::strerror(number)}; }

int checked(int result)
{
    if (result < 0)
        fail(errno);
    return result;
}

Descriptor::~Descriptor()
{
    if (m_number >= 0)
        ::close(m_number);
}

Descriptor openFolder(const Descriptor& parent, const std::string& name)
{
    const int number = ::openat(parent.number(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status {};
    if (number < 0 && errno == ENOTDIR && statusOf(parent, name, status)) {
        if (S_ISLNK(status.st_mode))
            throw Failure{ELOOP, "'" + name + "' is a link, which administrator rights do not follow"};
        errno = ENOTDIR;
    }
    return Descriptor(number);
}

bool statusOf(const Descriptor& folder, const std::string& name, struct stat& status)
{
    if (::fstatat(folder.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return true;
    if (errno != ENOENT)
        fail(errno);
    return false;
}

} // namespace orvanlite::root_runner
