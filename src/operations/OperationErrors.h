#pragma once

#include "model/PluginError.h"
#include "platform/ScriptRunner.h"

namespace orvanlite {

/// A script that failed with an error dictionary. Keeps its number and its plain message beside the text of
/// the PluginError.
class ScriptError final : public PluginError {
public:
    ScriptError(const QString& payload, const platform::ScriptErrorDictionary& dictionary);

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] const QString& message() const { return m_message; }

private:
    int m_number;
    QString m_message;
};

/// Converts an exception for `error`: a PluginError is kept, anything else becomes an unknown error with its
/// text.
[[nodiscard]] PluginError toPluginError(const std::exception& thrown);

} // namespace orvanlite
