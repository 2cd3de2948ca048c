#include "records/FavoritesList.h"

#include "model/Json.h"
#include "model/Uuid.h"

namespace orvanlite {

nlohmann::ordered_json toJson(const FavoritesList& list)
{
    nlohmann::ordered_json json;
    json["id"] = toUtf8(uuidText(list.id));
    json["name"] = toUtf8(list.name);
    json["createdAt"] = list.createdAt.sinceReference;
    auto& keys = json["pluginKeys"] = nlohmann::ordered_json::array();
    for (const QString& key : list.pluginKeys)
        keys.push_back(toUtf8(key));
    return json;
}

FavoritesList favoritesListFromJson(const nlohmann::json& json)
{
    const JsonObject object(json);
    FavoritesList list;
    list.id = object.uuid("id");
    list.name = object.text("name");
    list.createdAt = object.date("createdAt");
    const QStringList keys = object.texts("pluginKeys");
    list.pluginKeys = QSet<QString>(keys.begin(), keys.end());
    return list;
}

} // namespace orvanlite
