#pragma once

#include "shell/updates/UpdateChecker.h"

#include <QTcpServer>

namespace orvanlite::demo {

/// An update service on the loopback interface that always offers a newer version.
class UpdateServer final {
public:
    UpdateServer();

    /// Settings that direct an update check to this server.
    [[nodiscard]] UpdateService service() const;

private:
    QTcpServer m_server;
};

} // namespace orvanlite::demo
