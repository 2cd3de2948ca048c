#pragma once

#include <QObject>

class QProcess;

namespace orvanlite::platform {

/// One signal for a child process that has ended or failed to start; Qt has only separate ones.
class ProcessEnd final : public QObject {
    Q_OBJECT

public:
    explicit ProcessEnd(const QProcess& process);

Q_SIGNALS:
    void reached();
};

/// Child process modifier (see QProcess) for commands that create shared folders. Under the user's own umask
/// these might be closed to other users (077) or writable by them (0).
void useUsualUmask();

} // namespace orvanlite::platform
