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

constexpr int kNotHandled = -1708; // Source: errAEEventNotHandled

// Source: pkexec(1), "RETURN VALUE"; its error message then starts with these words in every locale.
constexpr int kPromptDismissed = 126;
constexpr int kPromptRefused = 127;
constexpr QStringView kPromptFailed = u"Error executing command as another user";
// Without an agent in the session, pkexec looks for a terminal to ask on.
constexpr QStringView kNoAgent = u"No authentication agent found";
constexpr QStringView kNoTerminal = u"Error creating textual authentication agent";

/// Output of our own before the command's, for `started`.
constexpr char kStarted = '\n';

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

/// Whether status 126 or 127 comes from the prompt. The shell exits with the same values for a program that
/// it cannot run, but prints a message.
bool isFromPrompt(const Call& call, const QString& errorText)
{
    return call.elevated && (errorText.isEmpty() || errorText.contains(kPromptFailed));
}

/// A command that could not be started, or a prompt that could not be shown.
std::optional<ScriptOutcome> startFailure(const QProcess& process, const Call& call, const QString& errorText)
{
    if (process.error() == QProcess::FailedToStart) {
        if (!call.elevated)
            return failure(process.errorString(), kScriptGeneralError);
        return failure(u"The password prompt cannot be started (%1)."_s.arg(process.errorString()),
                       kScriptInteractionNotAllowed);
    }
    if (call.elevated && process.exitCode() == kPromptRefused &&
        (errorText.contains(kNoAgent) || errorText.contains(kNoTerminal)))
        return failure(u"No authentication agent is running to ask for the password."_s,
                       kScriptInteractionNotAllowed);
    return std::nullopt;
}

ScriptOutcome outcomeOf(QProcess& process, const Call& call)
{
    const QString errorText = QString::fromUtf8(process.readAllStandardError()).trimmed();
    if (auto failed = startFailure(process, call, errorText))
        return *std::move(failed);
    if (process.exitStatus() != QProcess::NormalExit)
        return failure(errorText.isEmpty() ? u"The command was stopped by a signal."_s : errorText,
                       kScriptGeneralError);
    const int status = process.exitCode();
    if (status == kPromptDismissed && isFromPrompt(call, errorText))
        return failure(u"User canceled."_s, kScriptUserCancelled);
    if (status == kPromptRefused && isFromPrompt(call, errorText))
        return failure(u"The authorization was denied. "_s.append(errorText.simplified()).trimmed(),
                       kScriptAuthorisationDenied);
    if (status != 0)
        return failure(errorText.isEmpty() ? u"The command exited with a non-zero status."_s : errorText,
                       status);
    QByteArray output = process.readAllStandardOutput();
    if (output.startsWith(kStarted))
        output.remove(0, 1);
    if (output.endsWith('\n'))
        output.chop(1);
    return {QString::fromUtf8(output), std::nullopt};
}

/// Does not use the runner, which may be destroyed while the command runs. The process of an abandoned task
/// stays in its suspended frame and is not killed.
QCoro::Task<ScriptOutcome> run(Call call, std::function<void()> started)
{
    QProcess process;
    const ProcessEnd end(process);
    process.setProcessEnvironment(call.environment);
    process.setChildProcessModifier(useUsualUmask);
    if (started)
        QObject::connect(&process, &QProcess::readyReadStandardOutput, &end, std::move(started),
                         Qt::SingleShotConnection);
    process.start(call.program, call.arguments);
    // A cancelled prompt closes the pipe early; its exit status counts, not the failed write.
    process.write(call.input);
    process.closeWriteChannel();
    if (process.state() != QProcess::NotRunning)
        co_await qCoro(&end, &ProcessEnd::reached);
    co_return outcomeOf(process, call);
}

/// The command as the shell's standard input, as an argument is limited to 128 KiB.
///
/// The shell reads a group up to its closing brace before running anything, so input truncated because we
/// died runs nothing. Commands in the group cannot read the rest of it. The larger stack is for very long
/// chains: the shell recurses once per command of `a && b && ...`, and 8 MiB overflow below 200,000 commands.
/// A subshell reports the start, so that the command also runs when nobody reads its output any more.
QByteArray shellInput(const QString& command)
{
    return "ulimit -S -s 100000 2>/dev/null; { (echo); " + command.toUtf8() + "\n} </dev/null\n";
}

/// The root runner, which only executes our commands in the plugin folders and has its own prompt message. It
/// expects a final NUL, so that it can reject truncated commands. Empty in a sandbox, whose folders it
/// refuses, and in a build tree: there the shell runs the commands, and the prompt shows the system's
/// message.
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
        // pkexec clears the environment, so a sandbox's is set after it.
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

QCoro::Task<ScriptOutcome> FreedesktopScriptRunner::execute(QString source, std::function<void()> started)
{
    const auto parsed = parseAdministratorScript(source);
    if (const auto* error = std::get_if<ScriptErrorDictionary>(&parsed))
        co_return ScriptOutcome{std::nullopt, *error};
    if (std::holds_alternative<OtherScript>(parsed))
        co_return failure(u"Only shell scripts with administrator privileges can be run on this system."_s,
                          kNotHandled);
    Call call = makeCall(m_layout, m_elevationTool, std::get<QString>(parsed));
    co_return co_await run(std::move(call), std::move(started));
}

} // namespace orvanlite::platform
