#pragma once

#include <QDBusConnection>
#include <QString>

#include <optional>

namespace orvanlite::platform {

/// The message bus of the user's session, connected on first use.
class SessionBus final {
public:
    /// The bus named by the environment of this process. Never starts one.
    SessionBus() = default;
    explicit SessionBus(QString address)
        : m_address(std::move(address))
    {}
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    /// Null when there is no bus; connecting is tried only once.
    [[nodiscard]] QDBusConnection* connection();

private:
    std::optional<QString> m_address;
    std::optional<QDBusConnection> m_connection;
    bool m_tried = false;
};

} // namespace orvanlite::platform
