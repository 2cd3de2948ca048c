#pragma once

#include "platform/FileManager.h"

namespace orvanlite::platform {

/// The file system through the calls that both systems share. What counts as hidden beyond a leading dot is
/// the back end's to say.
class PosixFileManager : public FileManager {
public:
    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] std::optional<FileStatus> status(const QString& path) const override;
    [[nodiscard]] std::vector<DirectoryEntry> list(const QString& path, HiddenEntries hidden) const override;
    [[nodiscard]] std::optional<QByteArray> read(const QString& path, qint64 limit) const override;
    void write(const QString& path, const QByteArray& content, WriteMode mode) override;
    void move(const QString& source, const QString& destination) override;
    void remove(const QString& path) override;
    void createDirectory(const QString& path) override;

protected:
    /// Takes out of a listing what the platform itself marks as hidden. `hasDotHidden` tells that the folder
    /// holds an entry named ".hidden".
    virtual void removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                                      std::vector<DirectoryEntry>& entries) const = 0;
};

} // namespace orvanlite::platform
