#pragma once

#include "model/Date.h"
#include "model/PluginFormat.h"

#include <QByteArray>
#include <QSet>
#include <QUuid>

#include <vector>

namespace orvanlite {

/// A saved state of all plugins. Plugins are identified by key, so that a profile outlives scans and can be
/// moved to another machine.
struct PluginProfile {
    QUuid id;
    QString name; ///< need not be unique
    Date createdAt;
    QSet<QString> enabledPlugins;  ///< keys of enabled plugins; all others are disabled
    qint64 totalPluginCount = 0;   ///< list entries at the time of saving, not distinct keys
    QSet<QString> allPluginKeys{}; ///< keys of all plugins known to the profile

    [[nodiscard]] static QString pluginKey(const QString& name, PluginFormat format);

    bool operator==(const PluginProfile&) const = default;
};

using PluginProfiles = std::vector<PluginProfile>;

/// A compact list of objects with members in declared order. Keys are in no particular order.
[[nodiscard]] QByteArray encodeProfiles(const PluginProfiles& profiles);
/// One indented object with members in alphabetical order.
[[nodiscard]] QByteArray encodeProfileIndented(const PluginProfile& profile);
/// Shape:  "allPluginKeys" may be absent or null and is then a copy of "enabledPlugins". The last of
///         duplicate members wins.
/// Errors: JsonError for anything but a list of profiles; one invalid profile fails the whole list.
[[nodiscard]] PluginProfiles decodeProfiles(QByteArrayView json);
/// One object instead of a list; same rules.
[[nodiscard]] PluginProfile decodeProfile(QByteArrayView json);

/// A compact list of the keys, in no particular order.
[[nodiscard]] QByteArray encodePluginKeys(const QSet<QString>& keys);
/// Errors: JsonError for anything but a list of strings.
[[nodiscard]] QSet<QString> decodePluginKeys(QByteArrayView json);

} // namespace orvanlite
