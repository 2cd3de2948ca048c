#include "platform/freedesktop/root-runner/CallingUser.h"

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>

namespace orvanlite::root_runner {

namespace {

constexpr std::size_t kLongestText = 256U << 20U;

uid_t callingUser()
{
    const char* text = std::getenv("PKEXEC_UID");
    uid_t user = ::getuid();
    if (::geteuid() != 0 || !text)
        return user;
    const char* end = text + std::strlen(text);
    if (std::from_chars(text, end, user).ptr != end)
        std::abort(); // not what the prompt writes
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
