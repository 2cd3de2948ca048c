#include "platform/SingleInstance.h"

#include "platform/FileManager.h"
#include "platform/OnlyProcess.h"
#include "platform/Platform.h"
#include "platform/freedesktop/SessionBus.h"

#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>
#include <QVariantMap>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds kPatience(2);
constexpr unsigned long kRetryMilliseconds = 20;
constexpr qint64 kShortestCallMilliseconds = 100; ///< the bus itself answers within that

/// Source: Desktop Entry Specification, "D-Bus Activation".
const QString kInterface = u"org.freedesktop.Application"_s;
const QString kObject = u"/com/yourcompany/Orvanlite"_s;
constexpr char kToken[] = "XDG_ACTIVATION_TOKEN";
constexpr char kStartupId[] = "DESKTOP_STARTUP_ID";

/// One name per application folder: a run on another one is another instance.
QString busName(const SystemLayout& layout)
{
    constexpr qsizetype kEnough = 16;
    const QString folder = QFileInfo(layout.applicationFolder()).canonicalFilePath();
    const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256);
    return u"com.yourcompany.Orvanlite.Data_"_s + QString::fromLatin1(hash.toHex().first(kEnough));
}

/// What the desktop gave this process to prove that the user asked for the window.
QVariantMap platformData()
{
    QVariantMap data;
    if (qEnvironmentVariableIsSet(kToken))
        data.insert(u"activation-token"_s, qEnvironmentVariable(kToken));
    if (qEnvironmentVariableIsSet(kStartupId))
        data.insert(u"desktop-startup-id"_s, qEnvironmentVariable(kStartupId));
    return data;
}

QDBusMessage askToActivate(const QDBusConnection& bus, const QString& name, qint64 milliseconds)
{
    QDBusMessage call = QDBusMessage::createMethodCall(name, kObject, kInterface, u"Activate"_s);
    call.setAutoStartService(false);
    call.setArguments({platformData()});
    return bus.call(call, QDBus::Block, static_cast<int>(milliseconds));
}

/// The other process may just be starting, with no name on the bus yet, or ending: both are tried until time is up.
bool activateOtherOrSucceedIt(const SystemLayout& layout, const QString& lock)
{
    SessionBus session;
    const QDBusConnection* bus = session.connection();
    const QString name = busName(layout);
    bool isBusy = false;
    for (QDeadlineTimer deadline(kPatience); !deadline.hasExpired(); QThread::msleep(kRetryMilliseconds)) {
        if (bus) {
            const QDBusMessage reply =
                askToActivate(*bus, name, std::max(deadline.remainingTime(), kShortestCallMilliseconds));
            if (reply.type() == QDBusMessage::ReplyMessage)
                return false;
            isBusy = QDBusError(reply).type() == QDBusError::NoReply;
        }
        if (becomeOnlyProcess(lock))
            return true;
    }
    throw std::runtime_error(
        isBusy ? "Orvanlite is already running, and busy: its window comes to the front when it has finished."
               : "Orvanlite is already running, and its window cannot be reached over the session bus.");
}

} // namespace

/// What other processes see of this one on the bus.
class ActivationService final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ActivationService(const QString& name, QObject* context, std::function<void()> handler)
        : QObject(context)
        , m_handler(std::move(handler))
    {
        QDBusConnection* bus = m_session.connection();
        // The name last: who finds it finds the object too.
        if (bus && bus->registerObject(kObject, this, QDBusConnection::ExportAllSlots))
            bus->registerService(name);
    }

public Q_SLOTS:
    void Activate(const QVariantMap& data)
    {
        // Wayland lets a window come to the front only with a token of the user's action, which Qt takes from there.
        const QString token = data.value(u"activation-token"_s).toString();
        qputenv(kToken, (token.isEmpty() ? data.value(u"desktop-startup-id"_s).toString() : token).toUtf8());
        m_handler();
        qunsetenv(kToken);
    }

private:
    SessionBus m_session;
    std::function<void()> m_handler;
};

bool becomeOnlyInstance(const SystemLayout& layout)
{
    if (layout.applicationSupport.isEmpty())
        return true; // no folder to share
    try {
        makeFileManager(layout)->createDirectory(layout.applicationFolder());
    } catch (const FileError&) {
        return true; // the same
    }
    // In the folder itself and not in the runtime folder: sessions that share a home have one of these each.
    const QString lock = layout.applicationFolder() + u"/instance.lock"_s;
    return becomeOnlyProcess(lock) || activateOtherOrSucceedIt(layout, lock);
}

void whenStartedAgain(const SystemLayout& layout, QObject* context, std::function<void()> handler)
{
    new ActivationService(busName(layout), context, std::move(handler));
}

} // namespace orvanlite::platform

#include "FreedesktopSingleInstance.moc"
