#pragma once

#include "model/Date.h"

#include <nlohmann/json_fwd.hpp>

#include <QSet>
#include <QUuid>

namespace orvanlite {

/// A named set of plugins.
struct FavoritesList {
    QUuid id;
    QString name;
    Date createdAt;
    QSet<QString> pluginKeys;

    bool operator==(const FavoritesList&) const = default;
};

/// One object with the fields in declared order.
[[nodiscard]] nlohmann::ordered_json toJson(const FavoritesList& list);
/// Errors: JsonError for a missing key, a wrong type or an invalid UUID.
[[nodiscard]] FavoritesList favoritesListFromJson(const nlohmann::json& json);

} // namespace orvanlite
