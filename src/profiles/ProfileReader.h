#pragma once

#include "profiles/PluginProfile.h"

#include <nlohmann/json.hpp>

#include <array>
#include <string>
#include <unordered_map>

namespace orvanlite {

/// Reads profiles from parser events, without a tree of values: the file of a large library has tens of
/// megabytes, and a foreign document may be nested to any depth. Most keys occur in every profile, so each is
/// stored once.
class ProfileReader final : public nlohmann::json_sax<nlohmann::json> {
public:
    /// Both throw JsonError.
    [[nodiscard]] static PluginProfiles readList(QByteArrayView json);
    [[nodiscard]] static PluginProfile readOne(QByteArrayView json);

    bool null() override;
    bool boolean(bool value) override;
    bool number_integer(number_integer_t value) override;
    bool number_unsigned(number_unsigned_t value) override;
    bool number_float(number_float_t value, const string_t& text) override;
    bool string(string_t& value) override;
    bool binary(binary_t& value) override;
    bool start_object(std::size_t elements) override;
    bool key(string_t& name) override;
    bool end_object() override;
    bool start_array(std::size_t elements) override;
    bool end_array() override;
    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::json::exception& error) override;

private:
    enum Member { id, name, createdAt, enabledPlugins, totalPluginCount, allPluginKeys, unknown };
    enum class State { missing, wrong, read };
    enum class Context { outside, list, profile, keys };

    explicit ProfileReader(bool isList)
        : m_isList(isList)
    {}
    void run(QByteArrayView json);

    [[nodiscard]] bool isValueOf(Member member) const;
    [[nodiscard]] QSet<QString>& keys();
    bool accept();
    bool refuse();
    bool fail(std::string reason);

    static constexpr std::array<const char*, unknown> kNames{
        "id", "name", "createdAt", "enabledPlugins", "totalPluginCount", "allPluginKeys"};

    const bool m_isList;
    Context m_context = Context::outside;
    std::size_t m_skipped = 0; ///< depth within lists and objects that are ignored
    Member m_member = unknown;
    std::array<State, unknown + 1> m_states{};
    PluginProfile m_profile;
    PluginProfiles m_profiles;
    std::unordered_map<std::string, QString> m_knownKeys;
    std::string m_failure;
};

} // namespace orvanlite
