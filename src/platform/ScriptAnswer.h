#pragma once

#include "platform/ScriptRunner.h"

#include <QByteArray>

namespace orvanlite::platform {

/// What the script helper writes to standard output: a JSON object with the optional string "result" and the
/// optional object "error", whose values are strings. Neither is present when the script could not be
/// created.
[[nodiscard]] QByteArray encodeScriptAnswer(const ScriptOutcome& outcome);

/// Errors: any other text reads as an outcome without result and error. Members of other types are ignored.
[[nodiscard]] ScriptOutcome decodeScriptAnswer(const QByteArray& answer);

} // namespace orvanlite::platform
