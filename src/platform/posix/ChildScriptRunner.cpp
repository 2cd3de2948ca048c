#include "platform/posix/ChildScriptRunner.h"

#include "platform/AdministratorScript.h"
#include "platform/ScriptAnswer.h"
#include "platform/posix/ProcessEnd.h"

#include <QProcess>

#include <qcorosignal.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

QCoro::Task<ScriptOutcome> ChildScriptRunner::execute(QString source, std::function<void()> /*started*/)
{
    // The system's AppleScript compiler would accept more, such as AppleScript that continues after a `"`.
    const auto parsed = parseAdministratorScript(source);
    if (const auto* error = std::get_if<ScriptErrorDictionary>(&parsed)) {
        ScriptOutcome refused;
        refused.error = *error;
        co_return refused;
    }
    QProcess child;
    const ProcessEnd end(child);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.setChildProcessModifier(useUsualUmask);
    child.start(m_helper, QStringList());
    child.write(source.toUtf8());
    child.closeWriteChannel();
    // No timeout: the user may take any time to answer the password prompt.
    if (child.state() != QProcess::NotRunning)
        co_await qCoro(&end, &ProcessEnd::reached);
    if (child.error() == QProcess::FailedToStart)
        co_return ScriptOutcome{}; // no script was created
    // Only a helper that exited normally gave a complete answer. Otherwise the command may have run in part.
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
        ScriptOutcome stopped;
        stopped.error = scriptError(u"The script was stopped before its end."_s, kScriptGeneralError);
        co_return stopped;
    }
    co_return decodeScriptAnswer(child.readAllStandardOutput());
}

} // namespace orvanlite::platform
