#include "platform/PropertyListValues.h"

#include <QByteArrayView>

#include <algorithm>

namespace orvanlite::platform {

namespace {

constexpr std::string_view kDigits = "0123456789";

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kWhitespace = " \t\n\r";
    const std::size_t first = std::min(text.find_first_not_of(kWhitespace), text.size());
    return text.substr(first, text.find_last_not_of(kWhitespace) + 1 - first);
}

/// Removes leading characters of this set and returns their number.
std::size_t takeAll(std::string_view& text, std::string_view any)
{
    const std::size_t count = std::min(text.find_first_not_of(any), text.size());
    text.remove_prefix(count);
    return count;
}

/// Removes the first character if it is in this set.
bool take(std::string_view& text, std::string_view any)
{
    const bool isThere = !text.empty() && any.find(text.front()) != std::string_view::npos;
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// Removes a two-digit number and the character after it. Returns whether both were present and in range.
bool takeField(std::string_view& text, int smallest, int largest, std::string_view end)
{
    const std::string_view field = text.substr(0, 2);
    if (takeAll(text, kDigits) != 2)
        return false;
    const int number = (field[0] - '0') * 10 + field[1] - '0';
    return number >= smallest && number <= largest && take(text, end);
}

} // namespace

bool isInteger(std::string_view text)
{
    text = trimmed(text);
    take(text, "+-");
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal)
        text.remove_prefix(2);
    return takeAll(text, isHexadecimal ? "0123456789abcdefABCDEF" : kDigits) > 0 && text.empty();
}

bool isReal(std::string_view text)
{
    text = trimmed(text);
    take(text, "+-");
    for (const char* name : {"nan", "inf", "infinity"}) {
        if (QByteArrayView(text.data(), static_cast<qsizetype>(text.size()))
                .compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    std::size_t digits = takeAll(text, kDigits);
    if (take(text, "."))
        digits += takeAll(text, kDigits);
    if (digits == 0)
        return false;
    if (take(text, "eE")) {
        take(text, "+-");
        if (takeAll(text, kDigits) == 0)
            return false;
    }
    return text.empty();
}

bool isDate(std::string_view text)
{
    text = trimmed(text);
    take(text, "-");
    return takeAll(text, kDigits) >= 4 && take(text, "-") && takeField(text, 1, 12, "-") &&
           takeField(text, 1, 31, "T") && takeField(text, 0, 24, ":") && takeField(text, 0, 59, ":") &&
           takeField(text, 0, 60, "Z") && text.empty();
}

} // namespace orvanlite::platform
