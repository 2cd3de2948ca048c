#pragma once

#include <QMap>
#include <QString>

#include <qcorotask.h>

#include <optional>

namespace orvanlite::platform {

/// The error dictionary of a script, keyed by the names that the system's script service uses.
/// Source: NSAppleScript's error dictionary keys.
using ScriptErrorDictionary = QMap<QString, QString>;

inline constexpr QStringView kScriptErrorMessageKey = u"NSAppleScriptErrorMessage";
inline constexpr QStringView kScriptErrorBriefMessageKey = u"NSAppleScriptErrorBriefMessage";
inline constexpr QStringView kScriptErrorNumberKey = u"NSAppleScriptErrorNumber";

/// What came of a script. Both absent: the script could not be created or said nothing at all.
struct ScriptOutcome {
    std::optional<QString> result;
    std::optional<ScriptErrorDictionary> error;

    /// A result came back and no error with it.
    [[nodiscard]] bool succeeded() const { return result.has_value() && (!error || error->isEmpty()); }
    bool operator==(const ScriptOutcome&) const = default;
};

/// Number of a failure that has none of its own. Source: errOSAGeneralError.
inline constexpr int kScriptGeneralError = -2700;

/// An error dictionary with these two entries.
[[nodiscard]] ScriptErrorDictionary scriptError(const QString& message, int number);

/// The text of a whole error dictionary, one "key = value;" a line in braces, keys in ascending order.
[[nodiscard]] QString description(const ScriptErrorDictionary& dictionary);

/// Runs AppleScript source. `do shell script "..." with administrator privileges` asks the user for an
/// administrator's password in the system's own dialog and runs the command as root.
class ScriptRunner {
public:
    ScriptRunner() = default;
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;
    virtual ~ScriptRunner() = default;

    /// Never throws. The event loop turns until the dialog is answered and the command has ended.
    virtual QCoro::Task<ScriptOutcome> execute(QString source) = 0;
};

} // namespace orvanlite::platform
