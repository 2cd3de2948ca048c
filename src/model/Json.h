#pragma once

#include "model/Date.h"
#include "model/RawValue.h"

#include <nlohmann/json.hpp>

#include <QByteArray>
#include <QStringList>
#include <QUuid>

#include <optional>
#include <stdexcept>
#include <string>

namespace orvanlite {

/// A value in a JSON state file is missing or has the wrong type.
class JsonError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[nodiscard]] inline std::string toUtf8(const QString& text) { return text.toStdString(); }

/// Parses a whole document; nothing for invalid JSON. A byte-order mark is accepted, and the last of
/// duplicate keys wins. Member order is lost: it has no meaning in our files, and ordered_json inserts in
/// linear time, so that a foreign file with many members would take minutes.
[[nodiscard]] std::optional<nlohmann::json> parseJson(QByteArrayView text);

/// Compact UTF-8 text with the members in their order.
[[nodiscard]] QByteArray writeJson(const nlohmann::ordered_json& json);

/// Reads an object's members strictly: every getter throws JsonError for a missing member or a wrong type.
class JsonObject {
public:
    /// Throws JsonError when the value is not an object.
    explicit JsonObject(const nlohmann::json& json);
    /// The converted copy would not live long enough.
    explicit JsonObject(const nlohmann::ordered_json& json) = delete;

    /// Whether the member exists and is not null.
    [[nodiscard]] bool has(const char* key) const;
    [[nodiscard]] QString text(const char* key) const;
    [[nodiscard]] bool boolean(const char* key) const;
    [[nodiscard]] QUuid uuid(const char* key) const;
    /// Seconds since 2001-01-01 UTC, whole or with a fraction.
    [[nodiscard]] Date date(const char* key) const;
    [[nodiscard]] QStringList texts(const char* key) const;

    template <typename Enum>
    [[nodiscard]] Enum enumeration(const char* key) const
    {
        const auto value = fromRawValue<Enum>(text(key));
        if (!value)
            throw JsonError(std::string("unknown value of ") + key);
        return *value;
    }

private:
    [[nodiscard]] const nlohmann::json& member(const char* key) const;

    const nlohmann::json& m_json;
};

} // namespace orvanlite
