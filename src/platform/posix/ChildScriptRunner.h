#pragma once

#include "platform/ScriptRunner.h"

namespace orvanlite::platform {

/// Hands scripts to an executable of our own that reads the source on its standard input and writes the
/// answer of ScriptAnswer.h to its standard output. The system's script service blocks the thread that calls
/// it; in a child it blocks nothing of ours. The helper is not started for a script with administrator privileges that
/// parseAdministratorScript() refuses.
class ChildScriptRunner final : public ScriptRunner {
public:
    explicit ChildScriptRunner(QString helper)
        : m_helper(std::move(helper))
    {}
    QCoro::Task<ScriptOutcome> execute(QString source) override;

private:
    QString m_helper; ///< absolute path
};

} // namespace orvanlite::platform
