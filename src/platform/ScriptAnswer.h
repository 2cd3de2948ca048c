#pragma once

#include "platform/ScriptRunner.h"

#include <QByteArray>

namespace orvanlite::platform {

/// What the script helper writes to its standard output: one JSON object with the text "result", with the
/// object "error" whose values are all texts, or with none of them when the script could not be created.
[[nodiscard]] QByteArray encodeScriptAnswer(const ScriptOutcome& outcome);

/// Errors: anything that is no such object (the helper is missing, was killed or printed something else) reads as
///         an outcome without result and error. Members of other types are left out.
[[nodiscard]] ScriptOutcome decodeScriptAnswer(const QByteArray& answer);

} // namespace orvanlite::platform
