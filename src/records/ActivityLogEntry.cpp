#include "records/ActivityLogEntry.h"

#include "model/Json.h"
#include "model/Uuid.h"

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

nlohmann::ordered_json toJson(const ActivityLogEntry& entry)
{
    nlohmann::ordered_json json;
    json["id"] = toUtf8(uuidText(entry.id));
    json["timestamp"] = entry.timestamp.sinceReference;
    json["pluginName"] = toUtf8(entry.pluginName);
    json["format"] = toUtf8(entry.format);
    json["action"] = toUtf8(rawValue(entry.action));
    return json;
}

ActivityLogEntry entryFromJson(const nlohmann::json& json)
{
    const JsonObject object(json);
    ActivityLogEntry entry;
    entry.id = object.uuid("id");
    entry.timestamp = object.date("timestamp");
    entry.pluginName = object.text("pluginName");
    entry.format = object.text("format");
    entry.action = object.enumeration<ActivityAction>("action");
    return entry;
}

} // namespace

QString ActivityLogEntry::timeAgo(Date now) const
{
    // Clamped: the file may hold any number, and the cast is undefined for one that does not fit.
    constexpr double kLongest = 1e18;
    const double age = -(timestamp.sinceReference - now.sinceReference);
    const auto seconds = static_cast<qint64>(std::clamp(age, -kLongest, kLongest));
    if (seconds < 60)
        return u"just now"_s;
    if (seconds < 3600)
        return u"%1m ago"_s.arg(seconds / 60);
    if (seconds < 86400)
        return u"%1h ago"_s.arg(seconds / 3600);
    if (seconds < 2 * 86400)
        return u"yesterday"_s;
    return u"%1d ago"_s.arg(seconds / 86400);
}

QByteArray encodeActivityLog(const std::vector<ActivityLogEntry>& entries)
{
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const ActivityLogEntry& entry : entries)
        json.push_back(toJson(entry));
    return writeJson(json);
}

std::vector<ActivityLogEntry> decodeActivityLog(QByteArrayView text)
{
    const auto json = parseJson(text);
    if (!json || !json->is_array())
        return {};
    std::vector<ActivityLogEntry> entries;
    entries.reserve(json->size());
    try {
        for (const auto& entry : *json)
            entries.push_back(entryFromJson(entry));
    } catch (const JsonError&) {
        return {};
    }
    return entries;
}

} // namespace orvanlite
