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

} // namespace orvanlite::platform
