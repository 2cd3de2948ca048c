#include "platform/FileManager.h"

#include <cstring>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

FileError::FileError(int errorNumber, QString failedPath) : code(errorNumber), path(std::move(failedPath))
{
    message = QString::fromLocal8Bit(std::strerror(code)) + u": "_s + path;
    m_what = message.toUtf8();
}

} // namespace orvanlite::platform
