#pragma once

#include <sys/stat.h>

namespace orvanlite::platform {

/// While in scope, new files and folders are readable by everybody and writable by their owner only,
/// regardless of the umask the application was started with. For what all users of the machine share.
class SharedUmask {
public:
    SharedUmask()
        : m_old(::umask(S_IWGRP | S_IWOTH))
    {}
    SharedUmask(const SharedUmask&) = delete;
    SharedUmask& operator=(const SharedUmask&) = delete;
    ~SharedUmask() { ::umask(m_old); }

private:
    mode_t m_old;
};

} // namespace orvanlite::platform
