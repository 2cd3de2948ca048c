#pragma once

#include <sys/stat.h>

#include <string>
#include <utility>

namespace orvanlite::root_runner {

/// Why an action failed, for the line on standard error.
struct Failure {
    int number = 0; ///< errno
    std::string reason;
};

/// Throws Failure with the system's text.
[[noreturn]] void fail(int number);
/// Returns the result of a system call. Errors: Failure with errno if it is negative.
int checked(int result);

class Descriptor {
public:
    Descriptor() = default;
    /// Errors: Failure with errno for a negative number.
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

/// Opens a folder for use in *at() calls only. Errors: Failure, with ELOOP for a link.
[[nodiscard]] Descriptor openFolder(const Descriptor& parent, const std::string& name);

/// lstat() of the name. False when it does not exist. Errors: Failure.
[[nodiscard]] bool statusOf(const Descriptor& folder, const std::string& name, struct stat& status);

} // namespace orvanlite::root_runner
