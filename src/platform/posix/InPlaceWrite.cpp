#include "platform/posix/InPlaceWrite.h"

#include "platform/posix/Descriptor.h"

#include <fcntl.h>

#include <algorithm>

namespace orvanlite::platform {

namespace {

/// Adds to `written` what has been written so far, even if it throws.
void writeAt(const Descriptor& file, QByteArrayView content, qint64 offset, qint64& written,
             const QString& path)
{
    while (!content.isEmpty()) {
        const auto size = static_cast<std::size_t>(content.size());
        const ssize_t count =
            untilDone([&] { return ::pwrite(file.number(), content.data(), size, offset); });
        if (count < 0)
            throw FileError(errno, path);
        content = content.sliced(count);
        offset += count;
        written += count;
    }
}

/// Allocates the blocks for `size` bytes without changing the file's length. Throws if there is no space. False where
/// the file system cannot reserve any.
bool reserve(const Descriptor& file, qint64 oldSize, qint64 size, const QString& path)
{
#if defined(ORV_APPLE)
    if (size <= oldSize)
        return true;
    fstore_t request{F_ALLOCATEALL, F_PEOFPOSMODE, 0, size - oldSize, 0};
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

void writeBack(const Descriptor& file, const QByteArray& old, qint64 overwritten, const QString& path)
{
    qint64 restored = 0;
    writeAt(file, QByteArrayView(old).first(std::min<qint64>(overwritten, old.size())), 0, restored, path);
    if (::ftruncate(file.number(), old.size()) != 0)
        throw FileError(errno, path);
}

} // namespace

void overwriteInPlace(const Descriptor& file, const QByteArray& content, qint64 oldSize,
                      const std::optional<QByteArray>& old, const QString& path)
{
    qint64 written = 0;
    try {
        // Where nothing can be reserved, the part beyond the old end is written first.
        if (!reserve(file, oldSize, content.size(), path) && content.size() > oldSize)
            writeAt(file, QByteArrayView(content).sliced(oldSize), oldSize, written, path);
        // Line ends replace the rest of a longer old content until it is cut off: readers of text ignore them.
        writeAt(file, content.leftJustified(oldSize, '\n'), 0, written, path);
    } catch (const FileError&) {
        if (old && written > 0)
            writeBack(file, *old, written, path);
        throw;
    }
    if (::ftruncate(file.number(), content.size()) != 0)
        throw FileError(errno, path);
}

} // namespace orvanlite::platform
