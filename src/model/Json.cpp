#include "model/Json.h"

#include "model/Uuid.h"
#include "platform/Utf8.h"

namespace orvanlite {

namespace {

using Json = nlohmann::json;

/// More than any of our files needs. The parser does not recurse, but a value's destructor and serializer do.
constexpr int kDeepestNesting = 64;

QString toText(const Json& value, const char* key)
{
    if (!value.is_string())
        throw JsonError(std::string("no text: ") + key);
    return platform::fromUtf8(value.get_ref<const std::string&>());
}

} // namespace

std::optional<Json> parseJson(QByteArrayView text)
{
    bool tooDeep = false;
    const auto limitDepth = [&tooDeep](int depth, Json::parse_event_t, Json&) {
        tooDeep = tooDeep || depth > kDeepestNesting;
        return !tooDeep;
    };
    Json json = Json::parse(text.begin(), text.end(), limitDepth, false);
    if (tooDeep || json.is_discarded())
        return std::nullopt;
    return json;
}

QByteArray writeJson(const nlohmann::ordered_json& json)
{
    return QByteArray::fromStdString(
        json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

JsonObject::JsonObject(const Json& json)
    : m_json(json)
{
    if (!json.is_object())
        throw JsonError("no object");
}

bool JsonObject::has(const char* key) const
{
    const auto found = m_json.find(key);
    return found != m_json.end() && !found->is_null();
}

const Json& JsonObject::member(const char* key) const
{
    const auto found = m_json.find(key);
    if (found == m_json.end())
        throw JsonError(std::string("missing: ") + key);
    return *found;
}

QString JsonObject::text(const char* key) const { return toText(member(key), key); }

bool JsonObject::boolean(const char* key) const
{
    const Json& value = member(key);
    if (!value.is_boolean())
        throw JsonError(std::string("no boolean: ") + key);
    return value.get<bool>();
}

QUuid JsonObject::uuid(const char* key) const
{
    const auto id = parseUuid(text(key).toUtf8());
    if (!id)
        throw JsonError(std::string("no UUID: ") + key);
    return *id;
}

Date JsonObject::date(const char* key) const
{
    const Json& value = member(key);
    if (!value.is_number())
        throw JsonError(std::string("no date: ") + key);
    return Date{value.get<double>()};
}

QStringList JsonObject::texts(const char* key) const
{
    const Json& values = member(key);
    if (!values.is_array())
        throw JsonError(std::string("no list: ") + key);
    QStringList result;
    result.reserve(static_cast<qsizetype>(values.size()));
    for (const Json& value : values)
        result.append(toText(value, key));
    return result;
}

} // namespace orvanlite
