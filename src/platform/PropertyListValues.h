#pragma once

#include <string_view>

namespace orvanlite::platform {

// Whether an element's text is a value of its type, as Core Foundation's reader of XML lists takes it. Whitespace
// around the value is allowed; the size of a number is not looked at.

/// Decimal, or hexadecimal behind "0x".
[[nodiscard]] bool isInteger(std::string_view text);
/// Decimal with or without fraction and exponent, "nan", "inf" or "infinity".
[[nodiscard]] bool isReal(std::string_view text);
/// In UTC and to the second: "2001-01-01T00:00:00Z".
[[nodiscard]] bool isDate(std::string_view text);

} // namespace orvanlite::platform
