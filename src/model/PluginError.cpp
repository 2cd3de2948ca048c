#include "model/PluginError.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

PluginError::PluginError(Kind kind, QString payload)
    : m_kind(kind)
    , m_payload(std::move(payload))
{
    m_what = errorDescription().toUtf8();
}

QString PluginError::errorDescription() const
{
    switch (m_kind) {
    case Kind::permissionDenied:
        return u"Permission denied: "_s + m_payload;
    case Kind::fileNotFound:
        return u"File not found: "_s + m_payload;
    case Kind::invalidPath:
        return u"Invalid path: "_s + m_payload;
    case Kind::databaseError:
        return u"Database error: "_s + m_payload;
    case Kind::unknownError:
        break;
    }
    return u"Unknown error: "_s + m_payload;
}

} // namespace orvanlite
