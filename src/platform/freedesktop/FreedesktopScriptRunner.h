#pragma once

#include "platform/Platform.h"
#include "platform/ScriptRunner.h"
#include "platform/SystemLayout.h"

namespace orvanlite::platform {

/// Runs the command of a `do shell script "..." with administrator privileges` with the shell, in a child
/// process.
///
/// Shape:   scripts may run concurrently. The result is standard output without its final line end.
/// Errors:  an error dictionary for a script that does not parse, a prompt that was cancelled (-128) or
///          refused (-60005), a session in which no prompt can be shown (-60007), a command that cannot be
///          started, exits with a non-zero status (used as the number) or is killed.
/// Effects: running commands are never killed; they continue when the runner or the application is gone.
class FreedesktopScriptRunner final : public ScriptRunner {
public:
    FreedesktopScriptRunner(const SystemLayout& layout, Elevation elevation);
    /// `elevationTool` asks for the password and runs its arguments as a command; if empty, commands run
    /// directly.
    FreedesktopScriptRunner(const SystemLayout& layout, QString elevationTool);

    QCoro::Task<ScriptOutcome> execute(QString source, std::function<void()> started) override;

private:
    SystemLayout m_layout;
    QString m_elevationTool;
};

} // namespace orvanlite::platform
