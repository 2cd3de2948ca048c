#pragma once

#include <QDBusConnection>
#include <QString>

#include <optional>

namespace orvanlite::platform {

/// The message bus of the user's session, connected at the first use.
class SessionBus final {
public:
    /// The bus that the surroundings of this process name. None is ever started for us.
    SessionBus() = default;
    explicit SessionBus(QString address)
        : m_address(std::move(address))
    {}
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    /// Null when there is no bus; that is not tried again.
    [[nodiscard]] QDBusConnection* connection();

private:
    std::optional<QString> m_address;
    std::optional<QDBusConnection> m_connection;
    bool m_tried = false;
};

} // namespace orvanlite::platform
