#include "platform/freedesktop/SessionBus.h"

#include <QFileInfo>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// Empty where the session has no bus. The library's own search is avoided: it may start a bus of its own.
QString addressOfSession()
{
    const QString named = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!named.isEmpty())
        return named;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s;
    return QFileInfo(socket).isAbsolute() && QFileInfo::exists(socket) ? u"unix:path="_s + socket : QString();
}

/// Connections are known by a name within the process; each bus object has one of its own.
QString freshName()
{
    static int count = 0;
    return u"orvanlite-session-%1"_s.arg(++count);
}

} // namespace

SessionBus::~SessionBus()
{
    if (m_connection)
        QDBusConnection::disconnectFromBus(m_connection->name());
}

QDBusConnection* SessionBus::connection()
{
    if (!m_tried) {
        m_tried = true;
        const QString address = m_address.value_or(addressOfSession());
        if (!address.isEmpty())
            m_connection = QDBusConnection::connectToBus(address, freshName());
    }
    return m_connection && m_connection->isConnected() ? &*m_connection : nullptr;
}

} // namespace orvanlite::platform
