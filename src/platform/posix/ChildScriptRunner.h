#pragma once

#include "platform/ScriptRunner.h"

namespace orvanlite::platform {

/// Runs scripts in a helper executable that reads the source from standard input and writes the answer of
/// ScriptAnswer.h to standard output: the system's script service blocks the calling thread. The helper is
/// not started for a script that parseAdministratorScript() rejects.
class ChildScriptRunner final : public ScriptRunner {
public:
    explicit ChildScriptRunner(QString helper)
        : m_helper(std::move(helper))
    {}
    /// The script service does not report when the password has been accepted, so `started` is not called.
    QCoro::Task<ScriptOutcome> execute(QString source, std::function<void()> started) override;

private:
    QString m_helper; ///< absolute path
};

} // namespace orvanlite::platform
