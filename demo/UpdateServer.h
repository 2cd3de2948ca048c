#pragma once

#include "shell/updates/UpdateChecker.h"

#include <QTcpServer>

namespace orvanlite::demo {

/// The service that knows of newer versions, on this machine's loopback: it has one for whoever asks.
class UpdateServer final {
public:
    UpdateServer();

    /// What an update check needs to ask here and nowhere else.
    [[nodiscard]] UpdateService service() const;

private:
    QTcpServer m_server;
};

} // namespace orvanlite::demo
