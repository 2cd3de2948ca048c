#pragma once

#include <QByteArray>
#include <QString>

#include <exception>
#include <optional>
#include <vector>

namespace orvanlite::platform {

/// A failed file operation: the system's error number, the path concerned and a localised message.
class FileError final : public std::exception {
public:
    FileError(int code, QString path);
    /// With a more specific message than the one for the number.
    FileError(int code, QString path, QString message);

    [[nodiscard]] const char* what() const noexcept override { return m_what.constData(); }

    int code = 0; ///< errno of the failed call
    QString path;
    QString message; ///< localised description, e.g. "No such file or directory: /a/b"

private:
    QByteArray m_what;
};

enum class EntryKind {
    directory,
    file,
    unresolved, ///< a symbolic link or other entry; call status()
};

struct DirectoryEntry {
    QString name;
    EntryKind kind = EntryKind::unresolved;
    bool operator==(const DirectoryEntry&) const = default;
};

enum class HiddenEntries { skip, include };

/// Result of stat(): symbolic links are followed.
struct FileStatus {
    bool isDirectory = false;
    qint64 size = 0;                    ///< bytes
    qint64 accessTime = 0;              ///< whole seconds since 1970
    qint64 modificationTime = 0;        ///< whole seconds since 1970
    qint64 modificationNanoseconds = 0; ///< fraction of the modification time
    quint64 number = 0;                 ///< of the file in its file system, also after a rename
    bool operator==(const FileStatus&) const = default;
};

/// New files get mode 0666 minus the umask unless noted.
enum class WriteMode {
    /// Overwrites the file itself, also through a link. A failed write leaves the old content, unless the
    /// file system reports the failure only when the file is closed: space is reserved first, and what has
    /// been overwritten is written back. Only regular files and character devices.
    inPlace,
    /// Writes a new file and renames it over the old one, keeping its mode and, where permitted, its owner. A
    /// symbolic link stays; its target is replaced. Writes in place where no new file can be created.
    replaceFile,
    /// For files that no other user may read or tamper with: mode 0600, renamed into place, only in a private
    /// folder (see requirePrivateFolder()).
    privateFile,
};

enum class FolderAccess {
    byUmask,
    everybody, ///< readable by all users and writable by its owner only, regardless of the umask
};

/// The file system. Queries never throw; changing calls and list() throw FileError.
///
/// Paths are the system's bytes decoded as UTF-8, without Unicode normalisation. A name that is not valid
/// UTF-8 is listed with replacement characters, so its path does not lead back to the file.
class FileManager {
public:
    FileManager() = default;
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;
    virtual ~FileManager() = default;

    /// Whether the path exists; symbolic links are followed (a dangling link does not exist).
    [[nodiscard]] virtual bool exists(const QString& path) const = 0;

    /// Empty when the path does not exist or cannot be queried.
    [[nodiscard]] virtual std::optional<FileStatus> status(const QString& path) const = 0;

    /// The entries of a folder without "." and "..", in file-system order. Hidden entries are names with a
    /// leading dot and those the platform marks as hidden.
    [[nodiscard]] virtual std::vector<DirectoryEntry> list(const QString& path,
                                                           HiddenEntries hidden) const = 0;

    /// list() without hidden entries; empty for a folder that cannot be listed.
    [[nodiscard]] std::vector<DirectoryEntry> listOrNothing(const QString& path) const;

    /// The content of a regular file of at most `limit` bytes; empty for anything else. Never blocks: pipes
    /// and devices are not regular files.
    [[nodiscard]] virtual std::optional<QByteArray> read(const QString& path, qint64 limit) const = 0;

    virtual void write(const QString& path, const QByteArray& content, WriteMode mode) = 0;

    /// Moves a file or folder, also to another volume. Throws when the destination exists.
    virtual void move(const QString& source, const QString& destination) = 0;

    /// Removes a file, a symbolic link (not its target) or a folder with its contents. Throws when the path
    /// does not exist and, with nothing removed, when this user may not remove all of it.
    virtual void remove(const QString& path) = 0;

    /// Creates the folder and its missing parents; an existing folder is no error.
    virtual void createDirectory(const QString& path, FolderAccess access = FolderAccess::byUmask) = 0;

    /// Marks a file or folder as hidden from file browsers. May finish asynchronously; throws when it cannot
    /// be started. Does nothing without write access to the folder.
    virtual void setHidden(const QString& path) = 0;
};

} // namespace orvanlite::platform
