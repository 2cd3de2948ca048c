#include "model/AudioPlugin.h"

#include "model/Json.h"
#include "model/Uuid.h"

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr double kMostDays = 1e15;

} // namespace

QString AudioPlugin::statusValue() const { return isEnabled ? u"Enabled"_s : u"Disabled"_s; }

QString AudioPlugin::versionValue() const { return version.value_or(u"Unknown"_s); }

QString AudioPlugin::lastUsedValue(Date now) const
{
    if (!lastUsed)
        return u"Unknown"_s;
    // Clamped to what fits an integer: a damaged catalogue may hold any date.
    const double elapsed = (now.sinceReference - lastUsed->sinceReference) / 86400.0;
    const auto days = static_cast<qint64>(std::clamp(elapsed, -kMostDays, kMostDays));
    if (days == 0)
        return u"Today"_s;
    if (days == 1)
        return u"Yesterday"_s;
    // On purpose: no singular, and a future date reads as a negative number of days.
    if (days < 7)
        return u"%1 days ago"_s.arg(days);
    if (days < 30)
        return u"%1 weeks ago"_s.arg(days / 7);
    if (days < 365)
        return u"%1 months ago"_s.arg(days / 30);
    return u"%1 years ago"_s.arg(days / 365);
}

QString pluginKey(const QString& name, PluginFormat format) { return name + u'|' + rawValue(format); }

nlohmann::ordered_json toJson(const AudioPlugin& plugin)
{
    nlohmann::ordered_json json;
    json["id"] = toUtf8(uuidText(plugin.id));
    json["name"] = toUtf8(plugin.name);
    json["manufacturer"] = toUtf8(plugin.manufacturer);
    json["format"] = toUtf8(rawValue(plugin.format));
    json["originalPath"] = toUtf8(plugin.originalPath);
    json["currentPath"] = toUtf8(plugin.currentPath);
    json["isEnabled"] = plugin.isEnabled;
    if (plugin.version)
        json["version"] = toUtf8(*plugin.version);
    if (plugin.bundleIdentifier)
        json["bundleIdentifier"] = toUtf8(*plugin.bundleIdentifier);
    if (plugin.lastUsed)
        json["lastUsed"] = plugin.lastUsed->sinceReference;
    return json;
}

AudioPlugin audioPluginFromJson(const nlohmann::json& json)
{
    const JsonObject object(json);
    AudioPlugin plugin;
    plugin.id = object.uuid("id");
    plugin.name = object.text("name");
    plugin.manufacturer = object.text("manufacturer");
    plugin.format = object.enumeration<PluginFormat>("format");
    plugin.originalPath = object.text("originalPath");
    plugin.currentPath = object.text("currentPath");
    plugin.isEnabled = object.boolean("isEnabled");
    if (object.has("version"))
        plugin.version = object.text("version");
    if (object.has("bundleIdentifier"))
        plugin.bundleIdentifier = object.text("bundleIdentifier");
    if (object.has("lastUsed"))
        plugin.lastUsed = object.date("lastUsed");
    return plugin;
}

} // namespace orvanlite
