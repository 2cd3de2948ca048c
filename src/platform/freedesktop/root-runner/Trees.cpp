#include "platform/freedesktop/root-runner/Trees.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace orvanlite::root_runner {

namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

Descriptor openForReading(const Descriptor& folder, const std::string& name, int flags)
{
    return Descriptor(
        ::openat(folder.number(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags));
}

/// Without "." and "..". Read completely first, as entries are removed later.
std::vector<std::string> namesIn(const Descriptor& folder)
{
    Descriptor copy = openForReading(folder, ".", O_DIRECTORY);
    const std::unique_ptr<DIR, CloseDirectory> directory(::fdopendir(copy.number()));
    if (!directory)
        fail(errno);
    static_cast<void>(copy.release()); // closed with the directory
    std::vector<std::string> names;
    while (true) {
        errno = 0;
        const dirent* entry = ::readdir(directory.get());
        if (!entry && errno != 0)
            fail(errno);
        if (!entry)
            return names;
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
}

void removeEntries(const Descriptor& folder, bool withHidden)
{
    std::optional<Failure> failure;
    for (const std::string& name : namesIn(folder)) {
        if (!withHidden && name.front() == '.')
            continue;
        try {
            removeTree(folder, name);
        } catch (const Failure& caught) {
            if (!failure)
                failure = caught;
        }
    }
    if (failure)
        throw *failure;
}

/// Owner first, as chown() may clear mode bits. Set-user-ID, set-group-ID and sticky bits are dropped.
void copyAttributes(const struct stat& from, const Descriptor& to)
{
    if (::fchown(to.number(), from.st_uid, from.st_gid) != 0 && errno != EPERM && errno != EINVAL)
        fail(errno); // some file systems have no owners
    checked(::fchmod(to.number(), from.st_mode & 0777));
    const std::array times{from.st_atim, from.st_mtim};
    checked(::futimens(to.number(), times.data()));
}

void copyContent(const Descriptor& from, const Descriptor& to)
{
    std::array<char, 1 << 16> buffer{};
    while (const auto got = checked(static_cast<int>(::read(from.number(), buffer.data(), buffer.size())))) {
        for (int written = 0; written < got;)
            written += checked(static_cast<int>(
                ::write(to.number(), buffer.data() + written, static_cast<std::size_t>(got - written))));
    }
}

void copyLink(const Entry& source, const Entry& copy, const struct stat& status)
{
    std::array<char, PATH_MAX> target{};
    checked(static_cast<int>(
        ::readlinkat(source.folder.number(), source.name.c_str(), target.data(), target.size() - 1)));
    checked(::symlinkat(target.data(), copy.folder.number(), copy.name.c_str()));
    const std::array times{status.st_atim, status.st_mtim};
    // Best effort: only the target of a link is ever used.
    if (::fchownat(copy.folder.number(), copy.name.c_str(), status.st_uid, status.st_gid,
                   AT_SYMLINK_NOFOLLOW) +
            ::utimensat(copy.folder.number(), copy.name.c_str(), times.data(), AT_SYMLINK_NOFOLLOW) !=
        0)
        errno = 0;
}

void copyTree(const Entry& source, const Entry& copy);

void copyFolder(const Entry& source, const Entry& copy)
{
    Descriptor from = openForReading(source.folder, source.name, O_DIRECTORY);
    checked(::mkdirat(copy.folder.number(), copy.name.c_str(), S_IRWXU));
    Descriptor to = openForReading(copy.folder, copy.name, O_DIRECTORY);
    struct stat status {};
    checked(::fstat(from.number(), &status));
    Entry inside{std::move(from), {}};
    Entry insideCopy{std::move(to), {}};
    for (const std::string& name : namesIn(inside.folder)) {
        inside.name = name;
        insideCopy.name = name;
        copyTree(inside, insideCopy);
    }
    copyAttributes(status, insideCopy.folder);
}

void copyFile(const Entry& source, const Entry& copy)
{
    const Descriptor from = openForReading(source.folder, source.name, 0);
    struct stat status {};
    checked(::fstat(from.number(), &status));
    if (!S_ISREG(status.st_mode))
        throw Failure{EINVAL, "'" + source.name + "' is neither a file nor a folder nor a link"};
    const Descriptor to(::openat(copy.folder.number(), copy.name.c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    copyContent(from, to);
    copyAttributes(status, to);
}

void copyTree(const Entry& source, const Entry& copy)
{
    struct stat status {};
    if (!statusOf(source.folder, source.name, status))
        fail(ENOENT);
    if (S_ISLNK(status.st_mode))
        copyLink(source, copy, status);
    else if (S_ISDIR(status.st_mode))
        copyFolder(source, copy);
    else
        copyFile(source, copy);
}

/// Ignores failures: the caller reports that of the copy.
void removePartialCopy(const Entry& copy) noexcept
{
    try {
        removeTree(copy.folder, copy.name);
    } catch (const Failure&) {
        return;
    }
}

/// The user may be able to write to the destination's folder, so the copy is made in one that only we can
/// enter.
void copyTo(const Entry& source, const Entry& destination)
{
    std::uint64_t number = 0;
    checked(static_cast<int>(::getrandom(&number, sizeof number, 0)));
    // Hidden, so that no scan finds the copy unfinished.
    const std::string name = ".orvanlite-" + std::to_string(number);
    checked(::mkdirat(destination.folder.number(), name.c_str(), S_IRWXU));
    Entry copy{{}, source.name};
    std::optional<Failure> failure;
    try {
        copy.folder = openNewFolder(destination.folder, name);
        copyTree(source, copy);
        checked(::renameat(copy.folder.number(), copy.name.c_str(), destination.folder.number(),
                           destination.name.c_str()));
    } catch (const Failure& caught) {
        failure = caught;
        removePartialCopy(copy);
    }
    ::unlinkat(destination.folder.number(), name.c_str(), AT_REMOVEDIR);
    if (failure)
        throw *failure;
}

} // namespace

void removeTree(const Descriptor& folder, const std::string& name)
{
    if (::unlinkat(folder.number(), name.c_str(), 0) == 0 || errno == ENOENT)
        return;
    if (errno != EISDIR)
        fail(errno);
    removeEntries(openForReading(folder, name, O_DIRECTORY), true);
    if (::unlinkat(folder.number(), name.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT)
        fail(errno);
}

void removeVisibleEntries(const Descriptor& folder) { removeEntries(folder, false); }

Descriptor openNewFolder(const Descriptor& parent, const std::string& name)
{
    Descriptor folder = openForReading(parent, name, O_DIRECTORY);
    struct stat status {};
    checked(::fstat(folder.number(), &status));
    if (status.st_uid != ::geteuid() || (status.st_mode & 0777) != S_IRWXU || !namesIn(folder).empty())
        throw Failure{EPERM, "Other users have access to the copy"};
    return folder;
}

void moveTree(const Entry& source, const Entry& destination)
{
    if (::renameat(source.folder.number(), source.name.c_str(), destination.folder.number(),
                   destination.name.c_str()) == 0)
        return;
    if (errno != EXDEV)
        fail(errno);
    copyTo(source, destination);
    removeTree(source.folder, source.name);
}

} // namespace orvanlite::root_runner
