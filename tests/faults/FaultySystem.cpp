#include "FaultySystem.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <utility>

namespace orvanlite::test {

namespace {

Fault planned;
pid_t process = 0;
int calls = 0;
bool wasHalved = false;
bool* reached = nullptr; ///< in memory shared with the parent

enum class Outcome { passes, fails, isHalved };

/// Does not return from the call that kills.
Outcome outcomeOf(const std::string& path, bool isRead)
{
    if (planned.atCall == 0 || isRead != planned.isRead || path.rfind(planned.folder, 0) != 0)
        return Outcome::passes;
    const int call = ++calls;
    if (call < planned.atCall)
        return Outcome::passes;
    *reached = true;
    if (planned.error == 0) {
        ::kill(process, SIGKILL);
        ::kill(::getpid(), SIGKILL); // a child that shares our memory
    }
    errno = planned.error;
    if (!planned.isPartial)
        return Outcome::fails;
    if (call == planned.atCall)
        return Outcome::isHalved;
    return std::exchange(wasHalved, false) ? Outcome::fails : Outcome::passes;
}

Outcome outcomeOf(int file, bool isRead)
{
    if (planned.atCall == 0)
        return Outcome::passes;
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size() - 1);
    return length > 0 ? outcomeOf(path.data(), isRead) : Outcome::passes;
}

template <typename File>
bool fails(File file, bool isRead = false)
{
    return outcomeOf(file, isRead) != Outcome::passes;
}

template <typename... Offset>
ssize_t writing(long call, int file, const void* data, std::size_t size, Offset... offset)
{
    const Outcome outcome = outcomeOf(file, false);
    if (outcome == Outcome::fails)
        return -1;
    wasHalved = outcome == Outcome::isHalved;
    return ::syscall(call, file, data, wasHalved ? size / 2 : size, offset...);
}

int failures() { return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count(); }

} // namespace

End runWith(const Fault& fault, const std::function<void()>& work, bool* isReached)
{
    static bool* const shared = static_cast<bool*>(
        ::mmap(nullptr, sizeof(bool), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    *shared = false;
    const int before = failures();
    const pid_t child = ::fork();
    if (child == 0) {
        reached = shared;
        planned = fault;
        process = ::getpid();
        work();
        planned = {};
        ::_exit(failures() > before ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (isReached)
        *isReached = *shared;
    if (WIFSIGNALED(status))
        return WTERMSIG(status) == SIGKILL ? End::killed : End::failed;
    return WEXITSTATUS(status) == 0 ? End::finished : End::failed;
}

} // namespace orvanlite::test

// Replace those of the C library, in its callers too.
extern "C" {

using orvanlite::test::fails;
using orvanlite::test::writing;

ssize_t write(int file, const void* data, std::size_t size) { return writing(SYS_write, file, data, size); }
ssize_t pwrite(int file, const void* data, std::size_t size, off_t offset)
{
    return writing(SYS_pwrite64, file, data, size, offset);
}
ssize_t pwrite64(int file, const void* data, std::size_t size, off64_t offset)
{
    return writing(SYS_pwrite64, file, data, size, offset);
}
ssize_t read(int file, void* data, std::size_t size)
{
    return fails(file, true) ? -1 : ::syscall(SYS_read, file, data, size);
}
ssize_t pread64(int file, void* data, std::size_t size, off64_t offset)
{
    return fails(file, true) ? -1 : ::syscall(SYS_pread64, file, data, size, offset);
}
int ftruncate(int file, off_t size) noexcept
{
    return fails(file) ? -1 : static_cast<int>(::syscall(SYS_ftruncate, file, size));
}
int ftruncate64(int file, off64_t size) noexcept { return ::ftruncate(file, size); }
int fallocate(int file, int mode, off_t offset, off_t size)
{
    return fails(file) ? -1 : static_cast<int>(::syscall(SYS_fallocate, file, mode, offset, size));
}
int rename(const char* from, const char* to) noexcept
{
    return fails(to) ? -1 : static_cast<int>(::syscall(SYS_rename, from, to));
}
int renameat2(int from, const char* source, int to, const char* target, unsigned int flags) noexcept
{
    return fails(target) ? -1 : static_cast<int>(::syscall(SYS_renameat2, from, source, to, target, flags));
}
// A killed process loses nothing that it has written, and the tests wait for no disk.
int fsync(int) { return 0; }
int fdatasync(int) { return 0; }
int unlinkat(int folder, const char* name, int flags) noexcept
{
    const bool isFailing = folder == AT_FDCWD ? fails(name) : fails(folder);
    return isFailing ? -1 : static_cast<int>(::syscall(SYS_unlinkat, folder, name, flags));
}
int remove(const char* path) noexcept
{
    if (fails(path))
        return -1;
    const auto result = static_cast<int>(::syscall(SYS_unlink, path));
    return result != 0 && errno == EISDIR ? static_cast<int>(::syscall(SYS_rmdir, path)) : result;
}
int unlink(const char* path) noexcept
{
    return fails(path) ? -1 : static_cast<int>(::syscall(SYS_unlink, path));
}

} // extern "C"
