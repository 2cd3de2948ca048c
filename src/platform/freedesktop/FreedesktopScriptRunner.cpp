#include "platform/freedesktop/FreedesktopScriptRunner.h"

#include "platform/AdministratorScript.h"
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
constexpr int kNotHandled = -1708;           // Source: errAEEventNotHandled
constexpr int kAuthorisationDenied = -60005; // Source: errAuthorizationDenied

// Source: pkexec(1), "RETURN VALUE"; what it writes then begins with these words in every language.
constexpr int kPromptDismissed = 126;
constexpr int kPromptRefused = 127;
constexpr QStringView kPromptFailed = u"Error executing command as another user";

struct Call {
    QString program;
    QStringList arguments;
    QProcessEnvironment environment;
    QByteArray input;
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
    process.setChildProcessModifier(useUsualUmask);
    process.start(call.program, call.arguments);
    // A prompt that is cancelled closes the pipe early. Only its exit status counts then, not the failed write.
    process.write(call.input);
    process.closeWriteChannel();
    if (process.state() != QProcess::NotRunning)
        co_await qCoro(&end, &ProcessEnd::reached);
    co_return outcomeOf(process, call);
}

/// The command as the shell's standard input. As an argument it could not be longer than 128 KiB.
///
/// The shell reads a group to its closing brace before it runs anything, so an input that is cut short, because we
/// died while writing it, runs nothing. Commands in the group get no part of it as their own input. The stack is for
/// very long chains: the shell evaluates `a && b && ...` with one call per command, and 8 MiB end before 200,000.
QByteArray shellInput(const QString& command)
{
    return "ulimit -S -s 100000 2>/dev/null; { :; " + command.toUtf8() + "\n} </dev/null\n";
}

/// The prompt has words of its own for our runner, which does nothing but our commands in the plugin folders. It takes
/// them with a NUL behind, so that one that is cut short is none. Empty in a sandbox, whose folders it refuses, and in
/// a build tree; there the shell does the same under the system's words.
QString installedRunner(const SystemLayout& layout)
{
    const bool isInstalled = !layout.rootRunner.isEmpty() && QFileInfo(layout.rootRunner).isExecutable();
    return isInstalled && !layout.isSandbox() ? layout.rootRunner : QString();
}

Call makeCall(const SystemLayout& layout, const QString& elevationTool, const QString& command)
{
    Call call;
    call.program = layout.shell();
    call.input = shellInput(command);
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
        const QString runner = installedRunner(layout);
        call.arguments = {runner.isEmpty() ? layout.shell() : runner};
        if (!runner.isEmpty())
            call.input = command.toUtf8() + '\0';
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
    if (const auto* error = std::get_if<ScriptErrorDictionary>(&parsed))
        co_return ScriptOutcome{std::nullopt, *error};
    if (std::holds_alternative<OtherScript>(parsed))
        co_return failure(u"Only shell scripts with administrator privileges can be run on this system."_s,
                          kNotHandled);
    Call call = makeCall(m_layout, m_elevationTool, std::get<QString>(parsed));
    co_return co_await run(std::move(call));
}

} // namespace orvanlite::platform
