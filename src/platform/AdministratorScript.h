#pragma once

#include "platform/ScriptRunner.h"

#include <QStringView>

#include <variant>

namespace orvanlite::platform {

/// A script of any other form.
struct OtherScript {};

/// Parses `do shell script "{command}" with administrator privileges` before a runner executes it.
///
/// Shape:  the command, which may contain raw line ends. Whitespace around the statement is ignored.
/// Errors: the error dictionary of a script that does not compile (-2741) for a `"`, a backslash or a NUL in
///         the command, a missing closing quote and unexpected text after it. Commands are not escaped, so
///         such characters come from a file name: a `"` would turn the rest of the name into AppleScript, and
///         a backslash would name a different file.
[[nodiscard]] std::variant<QString, ScriptErrorDictionary, OtherScript>
parseAdministratorScript(QStringView source);

} // namespace orvanlite::platform
