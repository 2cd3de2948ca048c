#include "platform/freedesktop/FreedesktopScriptRunner.h"

#include "platform/freedesktop/AdministratorScript.h"
#include "platform/posix/ProcessEnd.h"

#include <unistd.h>

#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>

#include <qcorosignal.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr int kUserCancelled = -128;
constexpr int kAuthorisationDenied = -60005; // Source: errAuthorizationDenied

// Source: pkexec(1), "RETURN VALUE"; what it writes then begins with these words in every language.
constexpr int kPromptDismissed = 126;
constexpr int kPromptRefused = 127;
constexpr QStringView kPromptFailed = u"Error executing command as another user";

struct Call {
    QString program;
    QStringList arguments;
    QProcessEnvironment environment;
    bool elevated = false;
};

ScriptOutcome failure(const QString& message, int number)
{
    return {std::nullopt, scriptError(message, number)};
}

/// Whether an end with 126 or 127 comes from the prompt and not from the command: the shell gives the same
/// numbers for a program that it cannot run, but it says so.
bool isFromPrompt(const Call& call, const QString& errorText)
{
    return call.elevated && (errorText.isEmpty() || errorText.contains(kPromptFailed));
}

ScriptOutcome outcomeOf(QProcess& process, const Call& call)
{
    if (process.error() == QProcess::FailedToStart)
        return failure(process.errorString(), kScriptGeneralError);
    const QString errorText = QString::fromUtf8(process.readAllStandardError()).trimmed();
    if (process.exitStatus() != QProcess::NormalExit)
        return failure(errorText.isEmpty() ? u"The command was stopped by a signal."_s : errorText,
                       kScriptGeneralError);
    const int status = process.exitCode();
    if (status == kPromptDismissed && isFromPrompt(call, errorText))
        return failure(u"User canceled."_s, kUserCancelled);
    if (status == kPromptRefused && isFromPrompt(call, errorText))
        return failure(u"The authorization was denied. "_s.append(errorText.simplified()).trimmed(),
                       kAuthorisationDenied);
    if (status != 0)
        return failure(errorText.isEmpty() ? u"The command exited with a non-zero status."_s : errorText,
                       status);
    QByteArray output = process.readAllStandardOutput();
    if (output.endsWith('\n'))
        output.chop(1);
    return {QString::fromUtf8(output), std::nullopt};
}

/// Nothing of the runner is used in here: it may go while the command runs. A process that nobody waits for
/// any more stays with its suspended frame, so that it is not killed.
QCoro::Task<ScriptOutcome> run(Call call)
{
    QProcess process;
    const ProcessEnd end(process);
    process.setProcessEnvironment(call.environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(call.program, call.arguments);
    if (process.state() != QProcess::NotRunning)
        co_await qCoro(&end, &ProcessEnd::reached);
    co_return outcomeOf(process, call);
}

/// The prompt has words of its own for our runner. Without it, in a build tree, the shell does the same under the
/// system's words.
QStringList promptedCommand(const SystemLayout& layout, const QString& command)
{
    if (!layout.rootRunner.isEmpty() && QFileInfo(layout.rootRunner).isExecutable())
        return {layout.rootRunner, command};
    return {layout.shell(), u"-c"_s, command};
}

Call makeCall(const SystemLayout& layout, const QString& elevationTool, const QString& command)
{
    Call call;
    call.program = layout.shell();
    call.arguments = {u"-c"_s, command};
    call.environment = QProcessEnvironment::systemEnvironment();
    QStringList changes;
    if (layout.isSandbox()) {
        call.environment.insert(u"HOME"_s, layout.home);
        changes.append(u"HOME="_s + layout.home);
        if (!layout.toolOverrides.isEmpty() && QFileInfo(layout.toolOverrides).isDir()) {
            const QString path = layout.toolOverrides + u':' + call.environment.value(u"PATH"_s);
            call.environment.insert(u"PATH"_s, path);
            changes.append(u"PATH="_s + path);
        }
    }
    call.elevated = !elevationTool.isEmpty();
    if (call.elevated) {
        // The prompt's program clears the environment, so a sandbox's has to come behind it.
        call.arguments = promptedCommand(layout, command);
        if (!changes.isEmpty())
            call.arguments = QStringList{u"env"_s} + changes + call.arguments;
        call.program = elevationTool;
    }
    return call;
}

QString toolFor(Elevation elevation)
{
    return elevation == Elevation::none || ::geteuid() == 0 ? QString() : u"pkexec"_s;
}

} // namespace

FreedesktopScriptRunner::FreedesktopScriptRunner(const SystemLayout& layout, Elevation elevation)
    : FreedesktopScriptRunner(layout, toolFor(elevation))
{}

FreedesktopScriptRunner::FreedesktopScriptRunner(const SystemLayout& layout, QString elevationTool)
    : m_layout(layout)
    , m_elevationTool(std::move(elevationTool))
{}

QCoro::Task<ScriptOutcome> FreedesktopScriptRunner::execute(QString source)
{
    const auto parsed = parseAdministratorScript(source);
    if (const auto* error = std::get_if<ScriptErrorDictionary>(&parsed)) {
        ScriptOutcome outcome;
        outcome.error = *error;
        co_return outcome;
    }
    Call call = makeCall(m_layout, m_elevationTool, std::get<QString>(parsed));
    co_return co_await run(std::move(call));
}

} // namespace orvanlite::platform
