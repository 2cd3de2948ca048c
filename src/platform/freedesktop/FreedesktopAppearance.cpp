#include "platform/freedesktop/FreedesktopAppearance.h"

#include "platform/freedesktop/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QMap>
#include <QVariantMap>

#include <cstdint>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

const QString kService = u"org.freedesktop.portal.Desktop"_s;
const QString kPath = u"/org/freedesktop/portal/desktop"_s;
const QString kInterface = u"org.freedesktop.portal.Settings"_s;
const QString kAppearance = u"org.freedesktop.appearance"_s;
const QString kDesktopInterface = u"org.gnome.desktop.interface"_s;
const QString kAccessibility = u"org.gnome.desktop.a11y.interface"_s;

struct Look {
    std::optional<bool> dark;
    std::optional<Rgb> accent;
    bool reducesMotion = false;
    bool asksForContrast = false; ///< through the portal's own setting
    bool hasContrast = false;     ///< through the desktop's setting
    QString theme;
    bool operator==(const Look&) const = default;
};

std::optional<bool> darkFrom(const QVariant& value)
{
    switch (value.toUInt()) {
    case 1:
        return true;
    case 2:
        return false;
    default:
        return std::nullopt;
    }
}

/// A component outside 0...1 means that no accent colour is set.
std::optional<Rgb> accentFrom(const QVariant& value)
{
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != u"(ddd)")
        return std::nullopt;
    Rgb colour;
    argument.beginStructure();
    argument >> colour.red >> colour.green >> colour.blue;
    argument.endStructure();
    const auto isPart = [](double part) { return part >= 0 && part <= 1; };
    if (!isPart(colour.red) || !isPart(colour.green) || !isPart(colour.blue))
        return std::nullopt;
    return colour;
}

void apply(Look& look, const QString& group, const QString& key, const QVariant& value)
{
    if (group == kAppearance && key == u"color-scheme")
        look.dark = darkFrom(value);
    else if (group == kAppearance && key == u"accent-color")
        look.accent = accentFrom(value);
    else if (group == kDesktopInterface && key == u"enable-animations" &&
             value.metaType().id() == QMetaType::Bool)
        look.reducesMotion = !value.toBool();
    else if (group == kAppearance && key == u"contrast")
        look.asksForContrast = value.toUInt() == 1;
    else if (group == kAccessibility && key == u"high-contrast")
        look.hasContrast = value.toBool();
    else if (group == kDesktopInterface && key == u"gtk-theme")
        look.theme = value.toString();
}

/// Desktops without a setting for contrast select one of two themes.
bool isHighContrastTheme(const QString& theme) { return theme.startsWith(u"HighContrast"_s); }

QDBusMessage readAll()
{
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, u"ReadAll"_s);
    call.setArguments({QStringList{kAppearance, kDesktopInterface, kAccessibility}});
    return call;
}

} // namespace

/// The current settings and the portal's signals.
class AppearanceChannel final : public QObject {
    Q_OBJECT

public:
    AppearanceChannel(SessionBus& bus, std::chrono::milliseconds patience)
        : m_bus(bus)
        , m_patience(patience)
    {}

    const Look& look()
    {
        start();
        return m_look;
    }

    void start()
    {
        if (m_started)
            return;
        m_started = true;
        QDBusConnection* bus = m_bus.connection();
        if (!bus)
            return;
        bus->connect(QString(), kPath, kInterface, u"SettingChanged"_s, this,
                     SLOT(settingChanged(QDBusMessage)));
        // Without a portal, running or activatable, the bus itself replies immediately.
        const QDBusMessage answer = bus->call(readAll(), QDBus::Block, static_cast<int>(m_patience.count()));
        if (answer.type() == QDBusMessage::ReplyMessage)
            read(answer);
        else if (QDBusError(answer).type() == QDBusError::NoReply)
            readLater(*bus);
    }

public Q_SLOTS:
    void settingChanged(const QDBusMessage& message)
    {
        if (message.signature() != u"ssv")
            return;
        const QList<QVariant> arguments = message.arguments();
        Look changed = m_look;
        apply(changed, arguments[0].toString(), arguments[1].toString(),
              arguments[2].value<QDBusVariant>().variant());
        take(changed);
    }

Q_SIGNALS:
    void changed();

private:
    void readLater(const QDBusConnection& bus)
    {
        const auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(readAll()), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
            call->deleteLater();
            if (!call->isError())
                read(call->reply());
        });
    }

    void read(const QDBusMessage& answer)
    {
        if (answer.signature() != u"a{sa{sv}}")
            return;
        const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().value(0));
        Look known = m_look;
        for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
            for (auto setting = group->cbegin(); setting != group->cend(); ++setting)
                apply(known, group.key(), setting.key(), setting.value());
        }
        take(known);
    }

    void take(const Look& look)
    {
        if (look == m_look)
            return;
        m_look = look;
        Q_EMIT changed();
    }

    SessionBus& m_bus;
    std::chrono::milliseconds m_patience;
    Look m_look;
    bool m_started = false;
};

FreedesktopAppearance::FreedesktopAppearance(SessionBus& bus, std::chrono::milliseconds patience)
    : m_channel(std::make_unique<AppearanceChannel>(bus, patience))
{}

FreedesktopAppearance::~FreedesktopAppearance() = default;

std::optional<bool> FreedesktopAppearance::isDark() const
{
    const Look& look = m_channel->look();
    if (isHighContrastTheme(look.theme))
        return look.theme.endsWith(u"Inverse"_s);
    return look.dark;
}

std::optional<Rgb> FreedesktopAppearance::accentColour() const { return m_channel->look().accent; }

bool FreedesktopAppearance::reducesMotion() const { return m_channel->look().reducesMotion; }

bool FreedesktopAppearance::increasesContrast() const
{
    const Look& look = m_channel->look();
    return look.asksForContrast || look.hasContrast || isHighContrastTheme(look.theme);
}

void FreedesktopAppearance::observe(QObject* context, std::function<void()> handler)
{
    m_channel->start();
    QObject::connect(m_channel.get(), &AppearanceChannel::changed, context, std::move(handler));
}

} // namespace orvanlite::platform

#include "FreedesktopAppearance.moc"
