#include "platform/FileManager.h"

#include <cstring>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

FileError::FileError(int errorNumber, QString failedPath)
    : FileError(errorNumber, failedPath,
                QString::fromLocal8Bit(std::strerror(errorNumber)) + u": "_s + failedPath)
{}

FileError::FileError(int errorNumber, QString failedPath, QString text)
    : code(errorNumber)
    , path(std::move(failedPath))
    , message(std::move(text))
    , m_what(message.toUtf8())
{}

std::vector<DirectoryEntry> FileManager::listOrNothing(const QString& path) const
{
    try {
        return list(path, HiddenEntries::skip);
    } catch (const FileError&) {
        return {};
    }
}

} // namespace orvanlite::platform
