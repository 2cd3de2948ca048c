#include "operations/OperationErrors.h"

#include "platform/FileManager.h"

namespace orvanlite {

ScriptError::ScriptError(const QString& payload, const platform::ScriptErrorDictionary& dictionary)
    : PluginError(Kind::permissionDenied, payload)
    , m_number(dictionary.value(platform::kScriptErrorNumberKey.toString()).toInt())
    , m_message(dictionary.value(platform::kScriptErrorMessageKey.toString(), payload))
{}

PluginError toPluginError(const std::exception& thrown)
{
    if (const auto* known = dynamic_cast<const PluginError*>(&thrown))
        return *known;
    if (const auto* file = dynamic_cast<const platform::FileError*>(&thrown))
        return {PluginError::Kind::unknownError, file->message};
    return {PluginError::Kind::unknownError, QString::fromUtf8(thrown.what())};
}

} // namespace orvanlite
