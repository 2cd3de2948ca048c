#pragma once

#include "platform/ScriptRunner.h"

#include <QStringView>

#include <variant>

namespace orvanlite::platform {

/// Reads the one sentence of AppleScript that this system can run:
/// `do shell script "{literal}" with administrator privileges`.
///
/// Shape:  the command, with the escapes `\"`, `\\`, `\n`, `\r` and `\t` of the literal undone; raw line ends may
///         stand in it. White space around the sentence is no part of it.
/// Errors: the error dictionary of a script that does not compile (-2741) for another escape, a literal without end,
///         and anything but the closing words behind the `"` that ends it; another one (-1708) for all
///         other scripts.
/// Source: AppleScript Language Guide, "text" literals; its error numbers.
[[nodiscard]] std::variant<QString, ScriptErrorDictionary> parseAdministratorScript(QStringView source);

} // namespace orvanlite::platform
