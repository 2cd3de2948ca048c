#include "operations/WorkStatus.h"

#include "operations/OperationErrors.h"
#include "platform/ScriptRunner.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

WorkStatus working(const QString& verb, qsizetype count)
{
    const QString text = count == 1 ? u"%1 1 plugin…"_s : u"%1 %2 plugins…"_s;
    return {WorkStatus::State::working, count == 1 ? text.arg(verb) : text.arg(verb).arg(count)};
}

QString scriptFailureText(const ScriptError& failure)
{
    switch (failure.number()) {
    case platform::kScriptUserCancelled:
        return u"Cancelled. Nothing was changed."_s;
    case platform::kScriptAuthorisationDenied:
        return u"Administrator rights were denied. Nothing was changed."_s;
    case platform::kScriptInteractionNotAllowed:
        return failure.message() + u" Nothing was changed."_s;
    default:
        // The catalogue keeps its rows, but the script may have moved some of the plugins.
        return u"Failed, press Scan to see what was changed: "_s + failure.message();
    }
}

} // namespace

WorkStatus waitingForPassword()
{
    return {WorkStatus::State::waitingForPassword, u"Waiting for the password…"_s};
}

WorkStatus movingPlugins(qsizetype count) { return working(u"Moving"_s, count); }

WorkStatus deletingPlugins(qsizetype count) { return working(u"Deleting"_s, count); }

WorkStatus workFailure(const std::exception& thrown)
{
    const auto* script = dynamic_cast<const ScriptError*>(&thrown);
    const QString text =
        script ? scriptFailureText(*script) : u"Failed: "_s + toPluginError(thrown).payload();
    return {WorkStatus::State::notice, text.simplified()};
}

} // namespace orvanlite
