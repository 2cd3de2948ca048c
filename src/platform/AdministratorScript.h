#pragma once

#include "platform/ScriptRunner.h"

#include <QStringView>

#include <variant>

namespace orvanlite::platform {

/// Any other script than the one that is read here.
struct OtherScript {};

/// Reads `do shell script "{command}" with administrator privileges`, in front of whatever runs it.
///
/// Shape:  the command, which may contain raw line ends. White space around the sentence is not part of it.
/// Errors: the error dictionary of a script that does not compile (-2741) for a `"`, a backslash or a NUL in the
///         command, and for anything else behind it. Commands are not escaped, so these come from a file's name only:
///         a `"` would make the rest of the name a part of the script, and a backslash would name another file.
[[nodiscard]] std::variant<QString, ScriptErrorDictionary, OtherScript>
parseAdministratorScript(QStringView source);

} // namespace orvanlite::platform
