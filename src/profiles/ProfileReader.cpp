#include "profiles/ProfileReader.h"

#include "model/Json.h"
#include "model/Uuid.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cmath>

namespace orvanlite {

PluginProfiles ProfileReader::readList(QByteArrayView json)
{
    ProfileReader reader(true);
    reader.run(json);
    return std::move(reader.m_profiles);
}

PluginProfile ProfileReader::readOne(QByteArrayView json)
{
    ProfileReader reader(false);
    reader.run(json);
    return std::move(reader.m_profiles.front());
}

void ProfileReader::run(QByteArrayView json)
{
    if (!nlohmann::json::sax_parse(json.begin(), json.end(), this))
        throw JsonError(m_failure);
}

bool ProfileReader::isValueOf(Member member) const
{
    return m_skipped == 0 && m_context == Context::profile && m_member == member;
}

QSet<QString>& ProfileReader::keys()
{
    return m_member == enabledPlugins ? m_profile.enabledPlugins : m_profile.allPluginKeys;
}

bool ProfileReader::accept()
{
    m_states[m_member] = State::read;
    return true;
}

/// Rejects a value of the wrong type. Not fatal yet: a later duplicate of the member may be valid, and it
/// wins.
bool ProfileReader::refuse()
{
    if (m_skipped > 0)
        return true;
    if (m_context == Context::outside || m_context == Context::list)
        return fail(m_isList && m_context == Context::outside ? "no list of profiles" : "no profile");
    m_states[m_member] = State::wrong;
    return true;
}

bool ProfileReader::fail(std::string reason)
{
    m_failure = std::move(reason);
    return false;
}

bool ProfileReader::null()
{
    if (!isValueOf(allPluginKeys))
        return refuse();
    m_states[allPluginKeys] = State::missing;
    return true;
}

bool ProfileReader::boolean(bool) { return refuse(); }

bool ProfileReader::binary(binary_t&) { return refuse(); }

bool ProfileReader::number_integer(number_integer_t value)
{
    if (isValueOf(createdAt))
        m_profile.createdAt = Date{static_cast<double>(value)};
    else if (isValueOf(totalPluginCount))
        m_profile.totalPluginCount = value;
    else
        return refuse();
    return accept();
}

bool ProfileReader::number_unsigned(number_unsigned_t value)
{
    if (value <= static_cast<number_unsigned_t>(std::numeric_limits<number_integer_t>::max()))
        return number_integer(static_cast<number_integer_t>(value));
    if (!isValueOf(createdAt))
        return refuse();
    m_profile.createdAt = Date{static_cast<double>(value)};
    return accept();
}

bool ProfileReader::number_float(number_float_t value, const string_t&)
{
    constexpr double kTooLarge = 9223372036854775808.0;
    if (isValueOf(createdAt))
        m_profile.createdAt = Date{value};
    else if (isValueOf(totalPluginCount) && value == std::trunc(value) && std::abs(value) < kTooLarge)
        m_profile.totalPluginCount = static_cast<qint64>(value); // 5.0 is a whole number in JSON
    else
        return refuse();
    return accept();
}

bool ProfileReader::string(string_t& value)
{
    if (m_skipped == 0 && m_context == Context::keys) {
        auto known = m_knownKeys.find(value);
        if (known == m_knownKeys.end())
            known = m_knownKeys.emplace(value, platform::fromUtf8(QByteArrayView(value))).first;
        keys().insert(known->second);
        return true;
    }
    if (isValueOf(name)) {
        m_profile.name = platform::fromUtf8(QByteArrayView(value));
        return accept();
    }
    const auto uuid = isValueOf(id) ? parseUuid(QByteArrayView(value)) : std::nullopt;
    if (!uuid)
        return refuse();
    m_profile.id = *uuid;
    return accept();
}

bool ProfileReader::start_object(std::size_t)
{
    if (m_skipped == 0 && m_context == (m_isList ? Context::list : Context::outside)) {
        m_context = Context::profile;
        m_profile = {};
        m_states.fill(State::missing);
        return true;
    }
    if (!refuse())
        return false;
    ++m_skipped;
    return true;
}

bool ProfileReader::key(string_t& text)
{
    if (m_skipped > 0)
        return true;
    const auto found = std::find(kNames.begin(), kNames.end(), std::string_view(text));
    m_member = static_cast<Member>(found - kNames.begin());
    return true;
}

bool ProfileReader::end_object()
{
    if (m_skipped > 0) {
        --m_skipped;
        return true;
    }
    for (std::size_t member = 0; member < unknown; ++member) {
        if (m_states[member] == State::wrong)
            return fail(std::string("wrong type or value: ") + kNames[member]);
        if (m_states[member] == State::missing && member != allPluginKeys)
            return fail(std::string("missing: ") + kNames[member]);
    }
    if (m_states[allPluginKeys] == State::missing)
        m_profile.allPluginKeys = m_profile.enabledPlugins; // written before the member existed
    m_profiles.push_back(std::move(m_profile));
    m_context = m_isList ? Context::list : Context::outside;
    return true;
}

bool ProfileReader::start_array(std::size_t)
{
    if (m_skipped == 0 && m_isList && m_context == Context::outside) {
        m_context = Context::list;
        return true;
    }
    if (isValueOf(enabledPlugins) || isValueOf(allPluginKeys)) {
        m_context = Context::keys;
        keys().clear();
        if (!m_profiles.empty())
            keys().reserve(m_profiles.back().allPluginKeys.size()); // usually the same library
        return accept();
    }
    if (!refuse())
        return false;
    ++m_skipped;
    return true;
}

bool ProfileReader::end_array()
{
    if (m_skipped > 0)
        --m_skipped;
    else
        m_context = m_context == Context::keys ? Context::profile : Context::outside;
    return true;
}

bool ProfileReader::parse_error(std::size_t position, const std::string&, const nlohmann::json::exception&)
{
    return fail("no JSON at byte " + std::to_string(position));
}

} // namespace orvanlite
