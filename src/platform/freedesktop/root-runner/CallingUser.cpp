#include "platform/freedesktop/root-runner/CallingUser.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace orvanlite::root_runner {

namespace {

constexpr std::size_t kLongestText = 256U << 20U;
constexpr rlim_t kOpenFiles = 8192; ///< two per level of the deepest tree that a path can name

uid_t callingUser()
{
    const char* text = std::getenv("PKEXEC_UID");
    uid_t user = ::getuid();
    if (::geteuid() != 0 || !text)
        return user;
    const char* end = text + std::strlen(text);
    if (std::from_chars(text, end, user).ptr != end)
        std::abort(); // not written by pkexec
    return user;
}

} // namespace

Surroundings surroundingsOfCaller()
{
    Surroundings surroundings;
    surroundings.user = callingUser();
    if (const passwd* user = ::getpwuid(surroundings.user)) {
        surroundings.home = user->pw_dir;
        surroundings.group = user->pw_gid;
    } else {
        surroundings.group = ::getgid();
    }
    if (const passwd* own = ::getpwuid(::geteuid()))
        surroundings.rootHome = own->pw_dir;
    return surroundings;
}

void dropInheritedState()
{
    for (int standard = 0; standard < 3; ++standard) {
        if (::fcntl(standard, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != standard)
            std::abort();
    }
    ::closefrom(3);
    ::clearenv();
    ::umask(S_IWGRP | S_IWOTH);
    for (const auto& [resource, wanted] :
         {std::pair{RLIMIT_FSIZE, RLIM_INFINITY}, {RLIMIT_CPU, RLIM_INFINITY}, {RLIMIT_NOFILE, kOpenFiles}}) {
        rlimit limit{};
        ::getrlimit(resource, &limit);
        const rlimit raised{wanted, std::max(wanted, limit.rlim_max)};
        limit.rlim_cur = std::min(wanted, limit.rlim_max);
        if (::setrlimit(resource, &raised) != 0 && ::setrlimit(resource, &limit) != 0)
            std::abort();
    }
    // SIGPIPE: closing the window during a batch closes our standard error; the batch continues.
    for (const int signal : {SIGPIPE, SIGXFSZ, SIGXCPU, SIGALRM, SIGVTALRM, SIGPROF})
        std::signal(signal, SIG_IGN);
}

AsCallingUser::AsCallingUser(const Surroundings& surroundings)
    : m_switches(::geteuid() == 0 && surroundings.user != 0)
{
    if (m_switches && (::setgroups(0, nullptr) != 0 || ::setegid(surroundings.group) != 0 ||
                       ::seteuid(surroundings.user) != 0))
        std::abort();
}

AsCallingUser::~AsCallingUser()
{
    if (m_switches && (::seteuid(0) != 0 || ::setegid(::getgid()) != 0))
        std::abort();
}

std::string readAll(const Descriptor& file)
{
    std::string text;
    std::array<char, 1 << 16> buffer{};
    while (const auto got = checked(static_cast<int>(::read(file.number(), buffer.data(), buffer.size())))) {
        text.append(buffer.data(), static_cast<std::size_t>(got));
        if (text.size() > kLongestText)
            fail(EFBIG);
    }
    return text;
}

} // namespace orvanlite::root_runner
