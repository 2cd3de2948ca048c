#pragma once

#include <QString>

#include <array>
#include <optional>

namespace orvanlite {

/// An enumerator with its stored text.
template <typename Enum>
struct RawValueRow {
    Enum value;
    QStringView text;
};

/// The table of an enumeration with stored texts. Specialise it with `static constexpr std::array rows` in
/// declared order.
template <typename Enum>
struct RawValueTable;

/// All enumerators in declared order.
template <typename Enum>
inline constexpr auto allCases = [] {
    std::array<Enum, RawValueTable<Enum>::rows.size()> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i)
        cases[i] = RawValueTable<Enum>::rows[i].value;
    return cases;
}();

/// The stored text of an enumerator.
template <typename Enum>
[[nodiscard]] QString rawValue(Enum value)
{
    for (const auto& row : RawValueTable<Enum>::rows) {
        if (row.value == value)
            return row.text.toString();
    }
    return {};
}

/// The enumerator with this stored text, case-sensitive.
template <typename Enum>
[[nodiscard]] std::optional<Enum> fromRawValue(QStringView text)
{
    for (const auto& row : RawValueTable<Enum>::rows) {
        if (row.text == text)
            return row.value;
    }
    return std::nullopt;
}

} // namespace orvanlite
