#pragma once

#include <string_view>

namespace orvanlite::platform {

// Whether the text is a value of the element's type, by the rules of Core Foundation's XML reader.
// Surrounding whitespace is allowed; the range of a number is not checked.

/// Decimal, or hexadecimal after "0x".
[[nodiscard]] bool isInteger(std::string_view text);
/// Decimal with or without fraction and exponent, "nan", "inf" or "infinity".
[[nodiscard]] bool isReal(std::string_view text);
/// In UTC and to the second: "2001-01-01T00:00:00Z".
[[nodiscard]] bool isDate(std::string_view text);

} // namespace orvanlite::platform
