#pragma once

#include "platform/Platform.h"
#include "platform/ScriptRunner.h"
#include "platform/SystemLayout.h"

namespace orvanlite::platform {

/// Runs the command of a `do shell script "..." with administrator privileges` in a child process with the
/// shell.
///
/// Shape:   several scripts may run at once. The result is the standard output without one line end at its end.
/// Errors:  an error dictionary for a script that does not parse, a prompt that was cancelled (-128) or refused
///          (-60005), a command that cannot be started, ends with another status than 0 (its number) or is killed.
/// Effects: a running command is never ended by us: it goes on when the runner or the application has gone.
class FreedesktopScriptRunner final : public ScriptRunner {
public:
    FreedesktopScriptRunner(const SystemLayout& layout, Elevation elevation);
    /// With the program that asks for the password and runs what stands behind its name; directly if it is
    /// empty.
    FreedesktopScriptRunner(const SystemLayout& layout, QString elevationTool);

    QCoro::Task<ScriptOutcome> execute(QString source) override;

private:
    SystemLayout m_layout;
    QString m_elevationTool;
};

} // namespace orvanlite::platform
