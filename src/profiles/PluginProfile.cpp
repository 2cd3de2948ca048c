#include "profiles/PluginProfile.h"

#include "model/AudioPlugin.h"
#include "model/Json.h"
#include "model/Uuid.h"
#include "platform/Utf8.h"
#include "profiles/ProfileReader.h"

namespace orvanlite {

namespace {

nlohmann::ordered_json toJson(const QSet<QString>& keys)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const QString& key : keys)
        list.push_back(toUtf8(key));
    return list;
}

} // namespace

QString PluginProfile::pluginKey(const QString& name, PluginFormat format)
{
    return orvanlite::pluginKey(name, format);
}

nlohmann::ordered_json toJson(const PluginProfile& profile)
{
    nlohmann::ordered_json json;
    json["id"] = toUtf8(uuidText(profile.id));
    json["name"] = toUtf8(profile.name);
    json["createdAt"] = profile.createdAt.sinceReference;
    json["enabledPlugins"] = toJson(profile.enabledPlugins);
    json["totalPluginCount"] = profile.totalPluginCount;
    json["allPluginKeys"] = toJson(profile.allPluginKeys);
    return json;
}

QByteArray encodeProfiles(const PluginProfiles& profiles)
{
    // One at a time: thirty profiles of a large library are 50 MB of text, and far more as JSON values.
    QByteArray text("[");
    for (const PluginProfile& profile : profiles) {
        if (text.size() > 1)
            text.append(',');
        text.append(writeJson(toJson(profile)));
    }
    return text.append(']');
}

QByteArray encodeProfileIndented(const PluginProfile& profile)
{
    const nlohmann::json sorted(toJson(profile));
    return QByteArray::fromStdString(sorted.dump(2));
}

PluginProfiles decodeProfiles(QByteArrayView json) { return ProfileReader::readList(json); }

PluginProfile decodeProfile(QByteArrayView json) { return ProfileReader::readOne(json); }

QByteArray encodePluginKeys(const QSet<QString>& keys) { return writeJson(toJson(keys)); }

QSet<QString> decodePluginKeys(QByteArrayView json)
{
    using Event = nlohmann::json::parse_event_t;
    QSet<QString> keys;
    bool isList = false;
    bool isGood = true;
    // Each element is discarded at once: a foreign file may contain millions.
    const auto take = [&](int depth, Event event, nlohmann::json& value) {
        if (depth == 0) {
            isList = isList || event == Event::array_start;
            return isList;
        }
        if (event == Event::value && value.is_string())
            keys.insert(platform::fromUtf8(QByteArrayView(value.get_ref<const std::string&>())));
        else
            isGood = false;
        return false;
    };
    const auto rest = nlohmann::json::parse(json.begin(), json.end(), take, false);
    if (rest.is_discarded() || !isList || !isGood)
        throw JsonError("no list of keys");
    return keys;
}

} // namespace orvanlite
