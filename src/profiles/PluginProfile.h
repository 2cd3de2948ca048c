#pragma once

#include "model/Date.h"
#include "model/PluginFormat.h"

#include <QByteArray>
#include <QSet>
#include <QUuid>

#include <vector>

namespace orvanlite {

/// A saved state of the whole set of plugins. Plugins are named by their keys, so that a profile outlives scans and
/// goes from one machine to another.
struct PluginProfile {
    QUuid id;
    QString name; ///< a label: need not be unique
    Date createdAt;
    QSet<QString> enabledPlugins;  ///< keys of what is on; everything else is off
    qint64 totalPluginCount = 0;   ///< list entries at the time of saving, not distinct keys
    QSet<QString> allPluginKeys{}; ///< keys of all that the profile knows of

    [[nodiscard]] static QString pluginKey(const QString& name, PluginFormat format);

    bool operator==(const PluginProfile&) const = default;
};

using PluginProfiles = std::vector<PluginProfile>;

/// A compact list of objects with their members in declared order. The keys come in any order.
[[nodiscard]] QByteArray encodeProfiles(const PluginProfiles& profiles);
/// One object, indented, with its members in alphabetical order.
[[nodiscard]] QByteArray encodeProfileIndented(const PluginProfile& profile);
/// Errors: JsonError for anything but a list of profiles; one bad profile fails the whole list. Only "allPluginKeys"
///         may be absent or null, and is a copy of "enabledPlugins" then. Of equal members the last counts.
[[nodiscard]] PluginProfiles decodeProfiles(QByteArrayView json);
/// One object instead of a list, by the same rules.
[[nodiscard]] PluginProfile decodeProfile(QByteArrayView json);

/// A compact list of the keys, in any order.
[[nodiscard]] QByteArray encodePluginKeys(const QSet<QString>& keys);
/// Errors: JsonError for anything but a list of texts.
[[nodiscard]] QSet<QString> decodePluginKeys(QByteArrayView json);

} // namespace orvanlite
