#include "model/PluginKeyTransfer.h"

#include "model/Json.h"

namespace orvanlite {

QByteArray PluginKeyTransfer::encoded() const
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const QString& key : keys)
        list.push_back(toUtf8(key));
    nlohmann::ordered_json object;
    object["keys"] = std::move(list);
    return writeJson(object);
}

PluginKeyTransfer PluginKeyTransfer::decoded(QByteArrayView json)
{
    const auto parsed = parseJson(json);
    if (!parsed)
        throw JsonError("no JSON");
    return PluginKeyTransfer{JsonObject(*parsed).texts("keys")};
}

} // namespace orvanlite
