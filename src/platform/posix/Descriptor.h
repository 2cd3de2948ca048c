#pragma once

#include "platform/FileManager.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace orvanlite::platform {

/// Closes a file descriptor at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }

    /// Closes now. Throws FileError when the system reports a late write error.
    void closeWritten(const QString& path)
    {
        const int number = std::exchange(m_number, -1);
        if (::close(number) != 0 && errno != EINTR) // closed even if interrupted
            throw FileError(errno, path);
    }

private:
    int m_number;
};

/// Repeats the call while it is interrupted by signals.
template <typename Call>
auto untilDone(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

} // namespace orvanlite::platform
