#include "platform/PlainXml.h"

#include "platform/PropertyListCollector.h"

#include <algorithm>

namespace orvanlite::platform {

namespace {

/// Valid UTF-8 without control characters, `&`, `]` or U+F000...FFFF, some of which are not allowed in XML.
bool isPlain(std::string_view text)
{
    // No branches and no early return, so that the compiler can vectorise the loop.
    unsigned char odd = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        odd |= static_cast<unsigned char>((byte < 0x20) & (byte != '\n') & (byte != '\t'));
        odd |= static_cast<unsigned char>((byte == '&') | (byte == ']') | (byte == 0xEF));
    }
    return odd == 0 && QByteArrayView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

bool skip(std::string_view& text, std::string_view prefix)
{
    const bool isThere = text.starts_with(prefix);
    if (isThere)
        text.remove_prefix(prefix.size());
    return isThere;
}

void skipWhitespace(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n"), text.size()));
}

/// Skips the usual declaration and DOCTYPE. Any others remain, and the caller rejects them.
void skipProlog(std::string_view& text)
{
    skip(text, R"(<?xml version="1.0" encoding="UTF-8"?>)");
    skipWhitespace(text);
    // Only one of the two: a second DOCTYPE is an error.
    if (!skip(text, R"(<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" )"
                    R"("http://www.apple.com/DTDs/PropertyList-1.0.dtd">)"))
        skip(text, R"(<!DOCTYPE plist PUBLIC "-//Apple Computer//DTD PLIST 1.0//EN" )"
                   R"("http://www.apple.com/DTDs/PropertyList-1.0.dtd">)");
}

} // namespace

bool readPlainXml(std::string_view text, PropertyListCollector& collector)
{
    if (!isPlain(text))
        return false;
    skipProlog(text);
    std::vector<std::string_view> open;
    bool hasRoot = false;
    while (true) {
        const std::size_t bracket = std::min(text.find('<'), text.size());
        if (bracket > 0 && !collector.characters(text.substr(0, bracket)))
            return false;
        text.remove_prefix(bracket);
        if (text.empty())
            return hasRoot && open.empty();
        const std::size_t close = text.find('>');
        if (close == std::string_view::npos)
            return false;
        std::string_view tag = text.substr(1, close - 1);
        text.remove_prefix(close + 1);
        if (tag.starts_with('/')) {
            if (open.empty() || open.back() != tag.substr(1) || !collector.end())
                return false;
            open.pop_back();
            continue;
        }
        const bool isEmpty = tag.ends_with('/');
        if (isEmpty)
            tag.remove_suffix(1);
        if (tag == R"(plist version="1.0")")
            tag = "plist";
        // An invalid name is rejected like any unknown element.
        if ((open.empty() && hasRoot) || !collector.start(tag))
            return false;
        hasRoot = true;
        if (!isEmpty)
            open.push_back(tag);
        else if (!collector.end())
            return false;
    }
}

} // namespace orvanlite::platform
