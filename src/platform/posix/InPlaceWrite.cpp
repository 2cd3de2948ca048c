#include "platform/posix/InPlaceWrite.h"

#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace orvanlite::platform {

namespace {

/// What is to be written to a file, and the result. Volatile: a child process may set it.
struct Job {
    const int file;
    const QByteArrayView content;
    const std::optional<qint64> length; ///< cuts the file
    const qint64 first = 0;             ///< the content from here on is written before the rest
    volatile qint64 written = 0;        ///< bytes so far
    volatile int error = ECANCELED;     ///< errno; 0 when all is done
};

bool writeRange(Job& job, qint64 begin, qint64 end) noexcept
{
    while (begin < end) {
        const auto size = static_cast<std::size_t>(end - begin);
        const ssize_t count = ::pwrite(job.file, job.content.data() + begin, size, begin);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        begin += count;
        job.written = job.written + count;
    }
    return true;
}

void run(Job& job) noexcept
{
    const bool isDone = writeRange(job, job.first, job.content.size()) && writeRange(job, 0, job.first) &&
                        (!job.length || ::ftruncate(job.file, *job.length) == 0);
    job.error = isDone ? 0 : errno;
}

#if defined(ORV_APPLE)

void runToItsEnd(Job& job) { run(job); }

#else

/// Linux ends a write between two pages when the process is killed, and the file would hold a mixture. So a
/// child process writes, which the kill does not reach. It shares our memory: a real fork takes longer than
/// the write.
void runToItsEnd(Job& job)
{
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before); // the child must not run our handlers
    // NOLINTNEXTLINE(clang-analyzer-security.insecureAPI.vfork): system calls only
    const pid_t child = ::vfork();
    if (child == 0) {
        run(job);
        ::_exit(0); // NOLINT(clang-analyzer-unix.Vfork)
    }
    if (child < 0)
        run(job);
    else
        untilDone([child] { return ::waitpid(child, nullptr, 0); });
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

#endif

/// Allocates the blocks for `size` bytes without changing the file's length. Throws if there is no space.
/// False where the file system cannot reserve any.
bool reserve(const Descriptor& file, qint64 oldSize, qint64 size, const QString& path)
{
#if defined(ORV_APPLE)
    struct stat status {};
    if (::fstat(file.number(), &status) != 0)
        return false;
    // The request counts from the last block that the file has, which may be beyond its end.
    const qint64 allocated = static_cast<qint64>(status.st_blocks) * 512;
    if (size <= allocated)
        return true;
    fstore_t request{F_ALLOCATEALL, F_PEOFPOSMODE, 0, size - allocated, 0};
    const int result = ::fcntl(file.number(), F_PREALLOCATE, &request);
#else
    if (size <= 0)
        return true;
    const int result = untilDone([&] { return ::fallocate(file.number(), FALLOC_FL_KEEP_SIZE, 0, size); });
#endif
    if (result == 0)
        return true;
    const int error = errno;
    if (error != ENOSPC && error != EDQUOT && error != EFBIG && error != EIO)
        return false;
    if (::ftruncate(file.number(), oldSize) != 0)
        errno = 0; // what has been reserved stays: it only takes space
    throw FileError(error, path);
}

} // namespace

void overwriteInPlace(const Descriptor& file, const QByteArray& content, qint64 oldSize,
                      const std::optional<QByteArray>& old, const QString& path)
{
    const bool isReserved = reserve(file, oldSize, content.size(), path);
    // Line ends replace the rest of a longer old content until it is cut off: readers of text ignore them.
    const QByteArray padded = content.leftJustified(oldSize, '\n');
    // A complete content is not undone because the file could not be cut to the length that it has.
    const auto length = content.size() < oldSize ? std::optional<qint64>(content.size()) : std::nullopt;
    // Where nothing can be reserved, the part beyond the old end is written first.
    Job job{file.number(), padded, length, isReserved ? 0 : oldSize};
    runToItsEnd(job);
    if (job.error == 0)
        return;
    if (const qint64 written = job.written; old && written > 0) {
        const qint64 overwritten = std::min<qint64>(written, old->size());
        Job undo{file.number(), QByteArrayView(*old).first(overwritten), old->size()};
        runToItsEnd(undo);
    }
    throw FileError(job.error, path);
}

} // namespace orvanlite::platform
