#include "platform/posix/PosixFileManager.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace orvanlite::platform {

namespace {

namespace fs = std::filesystem;

/// An open file that is closed at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }

    /// Closes now; false when the system reports a late write error.
    [[nodiscard]] bool close()
    {
        const int number = std::exchange(m_number, -1);
        return ::close(number) == 0;
    }

private:
    int m_number;
};

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

fs::path toPath(const QString& path)
{
    return fs::path(path.toStdString());
}

EntryKind kindOf(const dirent& entry)
{
    if (entry.d_type == DT_DIR)
        return EntryKind::directory;
    if (entry.d_type == DT_REG)
        return EntryKind::file;
    return EntryKind::unresolved;
}

void writeAll(Descriptor& file, const QByteArray& content, const QString& path)
{
    const char* next = content.constData();
    qsizetype left = content.size();
    while (left > 0) {
        const ssize_t written = ::write(file.number(), next, static_cast<std::size_t>(left));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            throw FileError(errno, path);
        }
        next += written;
        left -= written;
    }
    if (!file.close())
        throw FileError(errno, path);
}

/// Whether anything at all has this name, a dangling link included.
bool isOccupied(const QByteArray& path)
{
    struct stat information {};
    return ::lstat(path.constData(), &information) == 0;
}

} // namespace

bool PosixFileManager::exists(const QString& path) const
{
    return ::access(path.toUtf8().constData(), F_OK) == 0;
}

std::optional<FileStatus> PosixFileManager::status(const QString& path) const
{
    struct stat information {};
    if (::stat(path.toUtf8().constData(), &information) != 0)
        return std::nullopt;
    FileStatus status;
    status.isDirectory = S_ISDIR(information.st_mode);
    status.size = information.st_size;
    status.accessTime = information.st_atime;
    status.modificationTime = information.st_mtime;
    return status;
}

std::vector<DirectoryEntry> PosixFileManager::list(const QString& path, HiddenEntries hidden) const
{
    const std::unique_ptr<DIR, CloseDirectory> directory(::opendir(path.toUtf8().constData()));
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
        entries.push_back({QString::fromUtf8(name), kindOf(*entry)});
    }
    if (hidden == HiddenEntries::skip)
        removeMarkedAsHidden(path, hasDotHidden, entries);
    return entries;
}

std::optional<QByteArray> PosixFileManager::read(const QString& path, qint64 limit) const
{
    // Not waiting for the other end: a pipe that a stranger left in a bundle must not stop a scan.
    const Descriptor file(::open(path.toUtf8().constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat information {};
    if (!file.isOpen() || ::fstat(file.number(), &information) != 0 || !S_ISREG(information.st_mode)
        || information.st_size > limit)
        return std::nullopt;
    QByteArray content(information.st_size, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < content.size()) {
        const ssize_t got = ::read(file.number(), content.data() + filled,
                                   static_cast<std::size_t>(content.size() - filled));
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return std::nullopt;
        }
        if (got == 0)
            break; // the file has become shorter meanwhile
        filled += got;
    }
    content.truncate(filled);
    return content;
}

void PosixFileManager::write(const QString& path, const QByteArray& content, WriteMode mode)
{
    const QByteArray name = path.toUtf8();
    if (mode == WriteMode::inPlace) {
        Descriptor file(::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
        if (!file.isOpen())
            throw FileError(errno, path);
        writeAll(file, content, path);
        return;
    }
    QByteArray temporary = name + ".XXXXXX";
    Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC)); // made readable by its owner alone
    if (!file.isOpen())
        throw FileError(errno, path);
    try {
        writeAll(file, content, path);
        if (std::rename(temporary.constData(), name.constData()) != 0)
            throw FileError(errno, path);
    } catch (const FileError&) {
        ::unlink(temporary.constData());
        throw;
    }
}

void PosixFileManager::move(const QString& source, const QString& destination)
{
    const QByteArray from = source.toUtf8();
    const QByteArray to = destination.toUtf8();
    if (!isOccupied(from))
        throw FileError(ENOENT, source);
    if (isOccupied(to))
        throw FileError(EEXIST, destination);
    if (std::rename(from.constData(), to.constData()) == 0)
        return;
    if (errno != EXDEV)
        throw FileError(errno, destination);
    // Another volume: copy, then remove, and leave no half copy behind.
    std::error_code error;
    fs::copy(toPath(source), toPath(destination),
             fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    if (error) {
        std::error_code ignored;
        fs::remove_all(toPath(destination), ignored);
        throw FileError(error.value(), destination);
    }
    fs::remove_all(toPath(source), error);
    if (error)
        throw FileError(error.value(), source);
}

void PosixFileManager::remove(const QString& path)
{
    std::error_code error;
    const auto removed = fs::remove_all(toPath(path), error);
    if (error)
        throw FileError(error.value(), path);
    if (removed == 0)
        throw FileError(ENOENT, path);
}

void PosixFileManager::createDirectory(const QString& path)
{
    std::error_code error;
    fs::create_directories(toPath(path), error);
    if (error)
        throw FileError(error.value(), path);
}

} // namespace orvanlite::platform
