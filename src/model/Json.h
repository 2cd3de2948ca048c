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

/// A value of the JSON state files is missing or of the wrong type.
class JsonError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[nodiscard]] inline std::string toUtf8(const QString& text) { return text.toStdString(); }

/// Parses a whole text. A byte-order mark is accepted, of equal keys the last one wins; nothing for anything
/// that is no JSON. The members lose their order, which says nothing in our files: to keep it, each of them
/// would be compared with all before it, and a stranger's file with many would take minutes.
[[nodiscard]] std::optional<nlohmann::json> parseJson(QByteArrayView text);

/// Compact UTF-8 text with the members in their order.
[[nodiscard]] QByteArray writeJson(const nlohmann::ordered_json& json);

/// Strict reading of an object's members: every call throws JsonError for a missing member or another type.
class JsonObject {
public:
    /// Throws JsonError when the value is no object.
    explicit JsonObject(const nlohmann::json& json);
    /// The converted copy would not live long enough.
    explicit JsonObject(const nlohmann::ordered_json& json) = delete;

    /// Whether the member is there and not null.
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
