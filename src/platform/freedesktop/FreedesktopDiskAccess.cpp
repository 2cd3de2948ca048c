#include "platform/freedesktop/FreedesktopDiskAccess.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QStandardPaths>

#include <unistd.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// The authority behind the password prompt runs, or would be started when it is asked.
bool hasPromptAuthority()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected())
        return false;
    const QString name = u"org.freedesktop.PolicyKit1"_s;
    const QDBusReply<QStringList> activatable = bus.interface()->activatableServiceNames();
    return bus.interface()->isServiceRegistered(name).value() ||
           (activatable.isValid() && activatable.value().contains(name));
}

} // namespace

bool FreedesktopDiskAccess::isGranted() const
{
    return ::geteuid() == 0 ||
           (!QStandardPaths::findExecutable(u"pkexec"_s).isEmpty() && hasPromptAuthority());
}

std::unique_ptr<FullDiskAccess> makeFullDiskAccess(const SystemLayout& /*layout*/)
{
    return std::make_unique<FreedesktopDiskAccess>();
}

QUrl FreedesktopDiskAccess::settings() const { return QUrl(u"https://wiki.debian.org/PolicyKit"_s); }

} // namespace orvanlite::platform
