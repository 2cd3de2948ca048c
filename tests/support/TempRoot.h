#pragma once

#include "platform/SystemLayout.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

/// A temporary folder that stands for "/" and is removed at the end. Absolute paths are those of the real
/// system.
class TempRoot {
public:
    TempRoot();

    [[nodiscard]] QString path() const { return m_path; }
    /// `root` in front of an absolute path.
    [[nodiscard]] QString at(QStringView absolutePath) const { return QString(m_path).append(absolutePath); }
    [[nodiscard]] platform::SystemLayout layout() const { return platform::SystemLayout::sandbox(m_path); }

    /// Writes a file, creating its parent folders.
    void addFile(QStringView absolutePath, const QByteArray& content = {}) const;
    /// The same with an executable shell script.
    void addScript(QStringView absolutePath, const QByteArray& lines) const;
    void addFolder(QStringView absolutePath) const;
    void setMode(QStringView absolutePath, mode_t mode) const;
    /// Creates a bundle folder, with "Contents/Info.plist" unless `infoPlist` is empty. With an executable,
    /// "Contents/MacOS/{name}" is created too.
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

/// Drops root's rights during its lifetime: root is denied nothing.
class WithoutRights {
public:
    WithoutRights();
    WithoutRights(const WithoutRights&) = delete;
    WithoutRights& operator=(const WithoutRights&) = delete;
    ~WithoutRights();
};

/// As lstat() gives it.
[[nodiscard]] struct stat statusOf(const QString& path);

/// An XML property list with these members in its root dictionary; `extra` goes in as it is.
[[nodiscard]] QByteArray infoPlist(const QList<std::pair<QString, QString>>& members,
                                   const QByteArray& extra = {});

} // namespace orvanlite::test
