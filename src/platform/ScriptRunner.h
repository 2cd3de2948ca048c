#pragma once

#include <QMap>
#include <QString>

#include <qcorotask.h>

#include <functional>
#include <optional>

namespace orvanlite::platform {

/// The error dictionary of a script, with the system's keys.
/// Source: NSAppleScript's error dictionary keys.
using ScriptErrorDictionary = QMap<QString, QString>;

inline constexpr QStringView kScriptErrorMessageKey = u"NSAppleScriptErrorMessage";
inline constexpr QStringView kScriptErrorBriefMessageKey = u"NSAppleScriptErrorBriefMessage";
inline constexpr QStringView kScriptErrorNumberKey = u"NSAppleScriptErrorNumber";

/// Outcome of a script. Neither is set when the script could not be created or gave no answer.
struct ScriptOutcome {
    std::optional<QString> result;
    std::optional<ScriptErrorDictionary> error;

    /// Has a result and no error.
    [[nodiscard]] bool succeeded() const { return result.has_value() && (!error || error->isEmpty()); }
    bool operator==(const ScriptOutcome&) const = default;
};

/// Error number of a failure without one of its own. Source: errOSAGeneralError.
inline constexpr int kScriptGeneralError = -2700;
/// Source: userCanceledErr.
inline constexpr int kScriptUserCancelled = -128;
/// Source: errAuthorizationDenied.
inline constexpr int kScriptAuthorisationDenied = -60005;
/// The user cannot be asked for a password. Source: errAuthorizationInteractionNotAllowed.
inline constexpr int kScriptInteractionNotAllowed = -60007;

/// An error dictionary with message and number.
[[nodiscard]] ScriptErrorDictionary scriptError(const QString& message, int number);

/// The dictionary as text: one "key = value;" per line in braces, keys in ascending order.
[[nodiscard]] QString description(const ScriptErrorDictionary& dictionary);

/// Runs AppleScript source. `do shell script "..." with administrator privileges` asks the user for an
/// administrator's password in the system's own dialog and runs the command as root.
class ScriptRunner {
public:
    ScriptRunner() = default;
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;
    virtual ~ScriptRunner() = default;

    /// Never throws. The event loop keeps running until the dialog is answered and the command has finished.
    /// `started` may be null. It is called once when the password has been accepted and the command starts,
    /// on systems that report it.
    virtual QCoro::Task<ScriptOutcome> execute(QString source, std::function<void()> started) = 0;
};

} // namespace orvanlite::platform
