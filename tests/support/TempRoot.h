#pragma once

#include "platform/SystemLayout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace orvanlite::test {

/// A temporary folder that stands for "/" and is removed at the end, filled with real files.
class TempRoot {
public:
    TempRoot();

    [[nodiscard]] QString path() const { return m_path; }
    /// `root` in front of an absolute path.
    [[nodiscard]] QString at(QStringView absolutePath) const { return QString(m_path).append(absolutePath); }
    [[nodiscard]] platform::SystemLayout layout() const { return platform::SystemLayout::sandbox(m_path); }

    /// Writes a file with its parent folders. The path is absolute as on the real system.
    void addFile(QStringView absolutePath, const QByteArray& content = {}) const;
    void addFolder(QStringView absolutePath) const;
    /// Makes a bundle folder; `infoPlist` becomes its "Contents/Info.plist" unless it is empty. With an
    /// executable, "Contents/MacOS/{name}" is made too.
    void addBundle(QStringView absolutePath, const QByteArray& infoPlist = {},
                   bool withExecutable = false) const;

    [[nodiscard]] bool exists(QStringView absolutePath) const;
    [[nodiscard]] QByteArray content(QStringView absolutePath) const;
    /// Names in the folder, hidden ones included, sorted.
    [[nodiscard]] QStringList names(QStringView absolutePath) const;

private:
    QTemporaryDir m_directory;
    QString m_path;
};

/// An XML property list with these members in its root dictionary; `extra` goes in as it is.
[[nodiscard]] QByteArray infoPlist(const QList<std::pair<QString, QString>>& members,
                                   const QByteArray& extra = {});

} // namespace orvanlite::test
