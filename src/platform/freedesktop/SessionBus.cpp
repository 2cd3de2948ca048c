#include "platform/freedesktop/SessionBus.h"

#include <QFileInfo>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// Empty where the session has no bus. The D-Bus library's own lookup is avoided, as it may start a bus.
QString addressOfSession()
{
    const QString named = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!named.isEmpty())
        return named;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s;
    return QFileInfo(socket).isAbsolute() && QFileInfo::exists(socket) ? u"unix:path="_s + socket : QString();
}

/// Qt identifies connections by name; each SessionBus needs its own.
QString uniqueName()
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
            m_connection = QDBusConnection::connectToBus(address, uniqueName());
    }
    return m_connection && m_connection->isConnected() ? &*m_connection : nullptr;
}

} // namespace orvanlite::platform
