#pragma once

#include <sys/stat.h>

#include <string>
#include <utility>

namespace orvanlite::root_runner {

/// Why an action cannot be done, for the line on standard error.
struct Failure {
    int number = 0; ///< errno
    std::string reason;
};

/// Throws Failure with the system's text.
[[noreturn]] void fail(int number);
/// The result of a system call. Errors: Failure by errno when it is negative.
int checked(int result);

class Descriptor {
public:
    Descriptor() = default;
    /// Errors: Failure by errno for a negative number.
    explicit Descriptor(int number)
        : m_number(checked(number))
    {}
    Descriptor(Descriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor();

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] int release() { return std::exchange(m_number, -1); }

private:
    int m_number = -1;
};

/// Opens a folder to be named in other calls only. Errors: Failure, ELOOP for a link.
[[nodiscard]] Descriptor openFolder(const Descriptor& parent, const std::string& name);

/// Of the name itself, not of what a link points to. False when there is none. Errors: Failure.
[[nodiscard]] bool statusOf(const Descriptor& folder, const std::string& name, struct stat& status);

} // namespace orvanlite::root_runner
