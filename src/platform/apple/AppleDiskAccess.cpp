#include "platform/apple/AppleDiskAccess.h"

#include "platform/SystemLayout.h"

#include <QFile>

#include <unistd.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

bool AppleDiskAccess::isGranted() const
{
    const QString database = m_layout.system(u"/Library/Application Support/com.apple.TCC/TCC.db");
    return ::access(QFile::encodeName(database).constData(), R_OK) == 0;
}

std::unique_ptr<FullDiskAccess> makeFullDiskAccess(const SystemLayout& layout)
{
    return std::make_unique<AppleDiskAccess>(layout);
}

QUrl AppleDiskAccess::settings() const
{
    return QUrl(u"x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"_s);
}

} // namespace orvanlite::platform
