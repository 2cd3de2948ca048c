#pragma once

#include "platform/FileManager.h"

namespace orvanlite::platform {

/// The part of the file manager that both systems share. Back ends define what is hidden beyond a leading
/// dot.
class PosixFileManager : public FileManager {
public:
    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] std::optional<FileStatus> status(const QString& path) const override;
    [[nodiscard]] std::vector<DirectoryEntry> list(const QString& path, HiddenEntries hidden) const override;
    [[nodiscard]] std::optional<QByteArray> read(const QString& path, qint64 limit) const override;
    void write(const QString& path, const QByteArray& content, WriteMode mode) override;
    void move(const QString& source, const QString& destination) override;
    void remove(const QString& path) override;
    void createDirectory(const QString& path, FolderAccess access = FolderAccess::byUmask) override;

protected:
    /// Removes entries that the platform marks as hidden. `hasDotHidden`: the folder contains a ".hidden"
    /// entry.
    virtual void removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                                      std::vector<DirectoryEntry>& entries) const = 0;

private:
    void writeInPlace(const QByteArray& name, const QByteArray& content, const QString& path);
};

} // namespace orvanlite::platform
