#pragma once

#include "model/Date.h"
#include "model/PluginFormat.h"

#include <nlohmann/json_fwd.hpp>

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

namespace orvanlite {

/// One plugin file or bundle found by a scan.
struct AudioPlugin {
    QUuid id; ///< new in every scan; stored data must refer to the plugin key instead
    QString name;
    QString manufacturer; ///< may be empty
    PluginFormat format = PluginFormat::au;
    QString originalPath; ///< where it belongs when enabled
    QString currentPath;  ///< where it is now
    bool isEnabled = true;
    std::optional<QString> version;
    std::optional<QString> bundleIdentifier;
    std::optional<Date> lastUsed; ///< last access of its executable

    /// "Enabled" or "Disabled".
    [[nodiscard]] QString statusValue() const;
    /// The version, or "Unknown" when absent; an empty version stays empty.
    [[nodiscard]] QString versionValue() const;
    /// The age of `lastUsed` in elapsed periods of 24 hours, e.g. "Today", "3 days ago", "1 weeks ago".
    [[nodiscard]] QString lastUsedValue(Date now) const;

    bool operator==(const AudioPlugin&) const = default;
};

using AudioPlugins = std::vector<AudioPlugin>;

/// The only identity of a plugin that outlives a scan: name, "|", raw value of the format. Case-sensitive and
/// not escaped; the catalogue's queries build the same text in SQL.
[[nodiscard]] QString pluginKey(const QString& name, PluginFormat format);
[[nodiscard]] inline QString pluginKey(const AudioPlugin& plugin)
{
    return pluginKey(plugin.name, plugin.format);
}

/// One object with the fields in declared order, without absent optional fields. Dates are seconds since
/// 2001-01-01 UTC.
[[nodiscard]] nlohmann::ordered_json toJson(const AudioPlugin& plugin);

/// Errors: JsonError for a missing required key, a wrong type, an invalid UUID or an unknown format.
[[nodiscard]] AudioPlugin audioPluginFromJson(const nlohmann::json& json);

} // namespace orvanlite
