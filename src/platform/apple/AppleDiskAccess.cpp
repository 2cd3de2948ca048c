#include "platform/apple/AppleDiskAccess.h"

#include "platform/SystemLayout.h"

#include <QFile>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// Source: the SQLite file format; the header string includes its terminating zero.
constexpr char kHeader[] = "SQLite format 3";

} // namespace

bool AppleDiskAccess::isGranted() const
{
    // On purpose not access(2), which does not ask for this permission: only reading the content shows it.
    QFile database(m_layout.system(u"/Library/Application Support/com.apple.TCC/TCC.db"));
    return database.open(QIODevice::ReadOnly | QIODevice::Unbuffered) &&
           database.read(sizeof kHeader) == QByteArray(kHeader, sizeof kHeader);
}

QUrl AppleDiskAccess::settings() const
{
    return QUrl(u"x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"_s);
}

} // namespace orvanlite::platform
