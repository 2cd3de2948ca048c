#include "platform/posix/PosixFileManager.h"

#include "platform/Path.h"
#include "platform/Utf8.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/InPlaceWrite.h"
#include "platform/posix/PrivateFolder.h"
#include "platform/posix/SharedUmask.h"

#include <QUuid>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#if defined(ORV_APPLE)
#include <copyfile.h>
#endif

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace orvanlite::platform {

namespace {

namespace fs = std::filesystem;

/// The old content of a larger file is not written back after a failed write, in bytes.
constexpr qint64 kLargestRestored = 1 << 28;

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

/// The path for a system call. Empty, which no file is named, if it contains a NUL: the call would stop there
/// and access another file.
QByteArray native(const QString& path) { return path.contains(QChar::Null) ? QByteArray() : path.toUtf8(); }

fs::path toPath(const QByteArray& path) { return fs::path(path.toStdString()); }

EntryKind kindOf(DIR* directory, const dirent& entry)
{
    if (entry.d_type == DT_DIR)
        return EntryKind::directory;
    if (entry.d_type == DT_REG)
        return EntryKind::file;
    struct stat information {};
    // Some file systems do not report entry types.
    if (entry.d_type == DT_UNKNOWN &&
        ::fstatat(::dirfd(directory), entry.d_name, &information, AT_SYMLINK_NOFOLLOW) == 0) {
        if (S_ISDIR(information.st_mode))
            return EntryKind::directory;
        if (S_ISREG(information.st_mode))
            return EntryKind::file;
    }
    return EntryKind::unresolved;
}

void writeAll(Descriptor& file, const QByteArray& content, const QString& path)
{
    const char* next = content.constData();
    qsizetype left = content.size();
    while (left > 0) {
        const ssize_t written =
            untilDone([&] { return ::write(file.number(), next, static_cast<std::size_t>(left)); });
        if (written < 0)
            throw FileError(errno, path);
        next += written;
        left -= written;
    }
    file.closeWritten(path);
}

/// Whether the name is taken, if only by a dangling link.
bool isOccupied(const QByteArray& path)
{
    struct stat information {};
    return ::lstat(path.constData(), &information) == 0;
}

/// Renames unless the new name is taken. False with errno. Atomic where the file system supports it, so that
/// a file created meanwhile is not replaced.
bool renameToFreeName(const QByteArray& from, const QByteArray& to)
{
#if defined(ORV_APPLE)
    if (::renamex_np(from.constData(), to.constData(), RENAME_EXCL) == 0)
        return true;
    if (errno != ENOTSUP)
        return false;
#else
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
#endif
    if (isOccupied(to)) {
        errno = EEXIST;
        return false;
    }
    return std::rename(from.constData(), to.constData()) == 0;
}

#if defined(ORV_APPLE)

/// Copies a file or folder with all attributes, links as links. Some code signatures of a bundle are extended
/// attributes.
std::error_code copyAll(const QByteArray& from, const QByteArray& to)
{
    constexpr copyfile_flags_t kAll = COPYFILE_ALL | COPYFILE_RECURSIVE | COPYFILE_NOFOLLOW;
    if (::copyfile(from.constData(), to.constData(), nullptr, kAll) != 0)
        return {errno, std::generic_category()};
    return {};
}

#else

/// Copies the times and, where permitted, the owner.
void copyAttributes(const fs::path& from, const fs::path& to)
{
    struct stat information {};
    if (::lstat(from.c_str(), &information) != 0)
        return;
    const std::array times{information.st_atim, information.st_mtim};
    if (::lchown(to.c_str(), information.st_uid, information.st_gid) != 0)
        errno = 0; // not permitted: the copy stays ours
    ::utimensat(AT_FDCWD, to.c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
}

/// Copies a file or folder with mode, times and owner, links as links.
std::error_code copyAll(const QByteArray& from, const QByteArray& to)
{
    const fs::path source = toPath(from);
    const fs::path target = toPath(to);
    std::error_code error;
    fs::copy(source, target, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    if (error)
        return error;
    for (fs::recursive_directory_iterator each(source, error), end; !error && each != end;
         each.increment(error))
        copyAttributes(each->path(), target / each->path().lexically_relative(source));
    copyAttributes(source, target);
    return {}; // a plain file cannot be iterated, and attributes are best effort
}

#endif

/// Copies to a free name through a temporary sibling: a partial copy never appears under the new name, and a
/// failed copy is removed.
void copyToFreeName(const QByteArray& from, const QByteArray& to, const QString& destination)
{
    const QByteArray partial = to + '.' + QUuid::createUuid().toByteArray(QUuid::Id128);
    std::error_code error = copyAll(from, partial);
    if (!error && !renameToFreeName(partial, to))
        error.assign(errno, std::generic_category());
    if (error) {
        std::error_code ignored;
        fs::remove_all(toPath(partial), ignored);
        throw FileError(error.value(), destination);
    }
}

/// Writes a temporary file beside `name` and renames it over `name`. False with errno, without effect, when
/// no file can be created. It is created with `mode`; given `old`, it gets that file's mode and, where
/// permitted, its owner and group.
bool writeThroughNewFile(const QByteArray& name, const QByteArray& content, const QString& path,
                         const struct stat* old, mode_t mode = S_IRUSR | S_IWUSR)
{
    // Not derived from the file's name, which may already have the maximum length.
    const QByteArray partial =
        name.first(name.lastIndexOf('/') + 1) + ".orvanlite-" + QUuid::createUuid().toByteArray(QUuid::Id128);
    Descriptor file(::open(partial.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.isOpen())
        return false;
    try {
        if (old) {
            if (::fchown(file.number(), old->st_uid, old->st_gid) != 0 &&
                ::fchown(file.number(), static_cast<uid_t>(-1), old->st_gid) != 0)
                errno = 0; // not permitted: the file stays ours
            if (::fchmod(file.number(), old->st_mode & 0777) != 0)
                throw FileError(errno, path);
        }
        writeAll(file, content, path);
        if (std::rename(partial.constData(), name.constData()) != 0)
            throw FileError(errno, path);
    } catch (const FileError&) {
        ::unlink(partial.constData());
        throw;
    }
    return true;
}

/// False when the file has to be written in place.
bool replaceFile(const QByteArray& name, const QByteArray& content, const QString& path)
{
    struct stat old {};
    if (::lstat(name.constData(), &old) != 0)
        return writeThroughNewFile(name, content, path, nullptr, 0666);
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(name.constData(), nullptr), &std::free);
    if (!real || ::stat(real.get(), &old) != 0 || !S_ISREG(old.st_mode))
        return false; // a dangling link, a device
    return writeThroughNewFile(real.get(), content, path, &old);
}

/// Throws unless an entry can be removed with all it holds. A removal that fails half-way leaves a damaged
/// bundle.
void requireRemovable(const QByteArray& name, const QString& path)
{
    const auto requireWritable = [&path](const char* folder) {
        if (::faccessat(AT_FDCWD, folder, W_OK | X_OK, AT_EACCESS) != 0)
            throw FileError(errno, path);
    };
    struct stat entry {};
    struct stat parent {};
    const fs::path folder = toPath(name).parent_path();
    if (::lstat(name.constData(), &entry) != 0 || ::stat(folder.c_str(), &parent) != 0)
        throw FileError(errno, path);
    requireWritable(folder.c_str());
    const uid_t user = ::geteuid();
    if ((parent.st_mode & S_ISVTX) != 0 && user != 0 && user != parent.st_uid && user != entry.st_uid)
        throw FileError(EPERM, path);
    if (!S_ISDIR(entry.st_mode))
        return;
    std::error_code error;
    if (!fs::is_empty(toPath(name), error))
        requireWritable(name.constData());
    for (fs::recursive_directory_iterator each(toPath(name), error), end; !error && each != end;
         each.increment(error)) {
        if (each->is_directory(error) && !each->is_symlink(error) && !fs::is_empty(each->path(), error))
            requireWritable(each->path().c_str());
    }
    if (error)
        throw FileError(error.value(), path);
}

/// Opens or creates the file. Below zero, with errno, on failure.
int openForWriting(const QByteArray& name)
{
    const auto open = [&name](int flags) {
        return untilDone(
            [&] { return ::open(name.constData(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0666); });
    };
    // A pipe would block until somebody reads it. A file that a file server has lent out is worth the wait.
    const int file = open(O_NONBLOCK);
    struct stat status {};
    if (file >= 0 || errno != EWOULDBLOCK || ::stat(name.constData(), &status) != 0 ||
        !S_ISREG(status.st_mode))
        return file;
    return open(0);
}

} // namespace

bool PosixFileManager::exists(const QString& path) const
{
    // Not access(), which checks the real user; all other calls act for the effective one.
    struct stat information {};
    return ::stat(native(path).constData(), &information) == 0;
}

std::optional<FileStatus> PosixFileManager::status(const QString& path) const
{
    struct stat information {};
    if (::stat(native(path).constData(), &information) != 0)
        return std::nullopt;
    FileStatus status;
    status.isDirectory = S_ISDIR(information.st_mode);
    status.size = information.st_size;
    status.number = information.st_ino;
    status.accessTime = information.st_atime;
    status.modificationTime = information.st_mtime;
#if defined(ORV_APPLE)
    status.modificationNanoseconds = information.st_mtimespec.tv_nsec;
#else
    status.modificationNanoseconds = information.st_mtim.tv_nsec;
#endif
    return status;
}

std::vector<DirectoryEntry> PosixFileManager::list(const QString& path, HiddenEntries hidden) const
{
    const std::unique_ptr<DIR, CloseDirectory> directory(::opendir(native(path).constData()));
    if (!directory)
        throw FileError(errno, path);
    std::vector<DirectoryEntry> entries;
    bool hasDotHidden = false;
    while (true) {
        errno = 0;
        const dirent* entry = ::readdir(directory.get());
        if (!entry) {
            if (errno != 0)
                throw FileError(errno, path);
            break;
        }
        const QByteArrayView name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        if (hidden == HiddenEntries::skip && name.front() == '.') {
            hasDotHidden = hasDotHidden || name == ".hidden";
            continue;
        }
        entries.push_back({fromUtf8(name), kindOf(directory.get(), *entry)});
    }
    if (hidden == HiddenEntries::skip)
        removeMarkedAsHidden(path, hasDotHidden, entries);
    return entries;
}

std::optional<QByteArray> PosixFileManager::read(const QString& path, qint64 limit) const
{
    // O_NONBLOCK: a pipe inside a bundle must not block the scan.
    const QByteArray name = native(path);
    const Descriptor file(
        untilDone([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    struct stat information {};
    if (!file.isOpen() || ::fstat(file.number(), &information) != 0 || !S_ISREG(information.st_mode) ||
        information.st_size > limit)
        return std::nullopt;
    QByteArray content(information.st_size, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < content.size()) {
        const auto missing = static_cast<std::size_t>(content.size() - filled);
        const ssize_t got =
            untilDone([&] { return ::read(file.number(), content.data() + filled, missing); });
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break; // truncated meanwhile
        filled += got;
    }
    content.truncate(filled);
    return content;
}

void PosixFileManager::write(const QString& path, const QByteArray& content, WriteMode mode)
{
    const QByteArray name = native(path);
    if (name.isEmpty())
        throw FileError(ENOENT, path);
    if (mode == WriteMode::privateFile) {
        requirePrivateFolder(parentFolder(path));
        if (!writeThroughNewFile(name, content, path, nullptr))
            throw FileError(errno, path);
        return;
    }
    if (mode == WriteMode::replaceFile && replaceFile(name, content, path))
        return;
    writeInPlace(name, content, path);
}

void PosixFileManager::writeInPlace(const QByteArray& name, const QByteArray& content, const QString& path)
{
    Descriptor file(openForWriting(name));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        throw FileError(errno, path);
    if (S_ISCHR(status.st_mode)) {
        ::fcntl(file.number(), F_SETFL, 0); // a slow terminal would refuse a part
        writeAll(file, content, path);
        return;
    }
    if (!S_ISREG(status.st_mode))
        throw FileError(ENXIO, path);
    const auto old = status.st_size <= kLargestRestored ? read(path, status.st_size) : std::nullopt;
    overwriteInPlace(file, content, status.st_size, old, path);
    file.closeWritten(path);
}

void PosixFileManager::move(const QString& source, const QString& destination)
{
    const QByteArray from = native(source);
    const QByteArray to = native(destination);
    if (!isOccupied(from))
        throw FileError(ENOENT, source);
    if (renameToFreeName(from, to))
        return;
    if (errno != EXDEV)
        throw FileError(errno, destination);
    if (isOccupied(to))
        throw FileError(EEXIST, destination);
    requireRemovable(from, source);
    copyToFreeName(from, to, destination);
    std::error_code error;
    fs::remove_all(toPath(from), error);
    if (error)
        throw FileError(error.value(), source);
}

void PosixFileManager::remove(const QString& path)
{
    const QByteArray name = native(path);
    requireRemovable(name, path);
    std::error_code error;
    fs::remove_all(toPath(name), error);
    if (error)
        throw FileError(error.value(), path);
}

void PosixFileManager::createDirectory(const QString& path, FolderAccess access)
{
    std::optional<SharedUmask> umask;
    if (access == FolderAccess::everybody)
        umask.emplace();
    std::error_code error;
    fs::create_directories(toPath(native(path)), error);
    if (error)
        throw FileError(error.value(), path);
}

} // namespace orvanlite::platform
