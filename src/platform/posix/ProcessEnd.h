#pragma once

#include <QObject>

class QProcess;

namespace orvanlite::platform {

/// Tells once that a child process has ended or could not be started. Qt has a signal for each, and one that
/// serves both has no public form.
class ProcessEnd final : public QObject {
    Q_OBJECT

public:
    explicit ProcessEnd(const QProcess& process);

Q_SIGNALS:
    void reached();
};

/// For QProcess::setChildProcessModifier() of whatever creates folders for everybody. With the user's own umask, 077
/// would close them to all other users and 0 would open them for writing.
void useUsualUmask();

} // namespace orvanlite::platform
