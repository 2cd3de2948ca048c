#pragma once

#include <QByteArray>
#include <QString>

#include <exception>
#include <optional>
#include <vector>

namespace orvanlite::platform {

/// A failed file operation: the system's error number, the path it is about and the system's own text.
class FileError final : public std::exception {
public:
    FileError(int code, QString path);
    /// With a text of the system's own instead of the one for the number.
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
    unresolved, ///< a symbolic link, or neither of the two: ask status()
};

struct DirectoryEntry {
    QString name;
    EntryKind kind = EntryKind::unresolved;
    bool operator==(const DirectoryEntry&) const = default;
};

enum class HiddenEntries { skip, include };

/// What the system says of a file, symbolic links followed.
struct FileStatus {
    bool isDirectory = false;
    qint64 size = 0;                    ///< bytes
    qint64 accessTime = 0;              ///< whole seconds since 1970
    qint64 modificationTime = 0;        ///< whole seconds since 1970
    qint64 modificationNanoseconds = 0; ///< beyond the whole seconds
    bool operator==(const FileStatus&) const = default;
};

/// A file that is new gets mode 0666 less the umask unless the mode says otherwise.
enum class WriteMode {
    inPlace, ///< opens, truncates and writes the file itself
    /// Writes a new file and renames it over the old one, whose rights it keeps, and whose owner where that is allowed.
    /// A link stays and what it points to is replaced. In place where the folder takes no new file.
    replaceFile,
    /// For what nobody else may read, or change before it is used: mode 0600, put in place whole, and only in a folder
    /// that is private (see requirePrivateFolder()).
    privateFile,
};

/// The file system. Asking calls never throw; changing calls and list() throw FileError.
///
/// Paths are the bytes that the system gives, decoded as UTF-8 without composing or replacing. A name that is
/// no UTF-8 is listed with replacement characters, and so does not lead back to its file.
class FileManager {
public:
    FileManager() = default;
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;
    virtual ~FileManager() = default;

    /// Whether something stands at the path, symbolic links followed (a dangling link does not exist).
    [[nodiscard]] virtual bool exists(const QString& path) const = 0;

    /// Nothing when the path does not exist or cannot be asked.
    [[nodiscard]] virtual std::optional<FileStatus> status(const QString& path) const = 0;

    /// The entries of a folder without "." and "..", in the order in which the file system gives them.
    /// Hidden is a name with a leading dot, and what the platform marks as hidden in its own way.
    [[nodiscard]] virtual std::vector<DirectoryEntry> list(const QString& path,
                                                           HiddenEntries hidden) const = 0;

    /// list() without hidden entries; empty for a folder that cannot be listed.
    [[nodiscard]] std::vector<DirectoryEntry> listOrNothing(const QString& path) const;

    /// The content of a regular file of at most `limit` bytes; nothing for anything else. Never waits (a pipe or
    /// a device is no regular file).
    [[nodiscard]] virtual std::optional<QByteArray> read(const QString& path, qint64 limit) const = 0;

    virtual void write(const QString& path, const QByteArray& content, WriteMode mode) = 0;

    /// Moves a file or folder, also to another volume. Throws when something stands at the destination.
    virtual void move(const QString& source, const QString& destination) = 0;

    /// Removes a file, a symbolic link (not what it points to) or a folder with all it holds. Throws when there
    /// is nothing.
    virtual void remove(const QString& path) = 0;

    /// Creates the folder and its missing parents; an existing folder is no error.
    virtual void createDirectory(const QString& path) = 0;

    /// Marks a file or folder as hidden from file browsers. Its end is not waited for; throws when it cannot be
    /// started. Without rights to the folder nothing happens, and nothing is thrown.
    virtual void setHidden(const QString& path) = 0;
};

} // namespace orvanlite::platform
