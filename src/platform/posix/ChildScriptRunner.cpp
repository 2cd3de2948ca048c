#include "platform/posix/ChildScriptRunner.h"

#include "platform/ScriptAnswer.h"
#include "platform/posix/ProcessEnd.h"

#include <QProcess>

#include <qcorosignal.h>

namespace orvanlite::platform {

QCoro::Task<ScriptOutcome> ChildScriptRunner::execute(QString source)
{
    QProcess child;
    const ProcessEnd end(child);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(m_helper, QStringList());
    child.write(source.toUtf8());
    child.closeWriteChannel();
    // No limit, as the user takes any time to answer the password prompt.
    if (child.state() != QProcess::NotRunning)
        co_await qCoro(&end, &ProcessEnd::reached);
    // An answer counts only if the helper lived to finish it.
    if (child.error() == QProcess::FailedToStart || child.exitStatus() != QProcess::NormalExit ||
        child.exitCode() != 0)
        co_return ScriptOutcome{};
    co_return decodeScriptAnswer(child.readAllStandardOutput());
}

} // namespace orvanlite::platform
