#pragma once

#include <QStringView>

#include <cstddef>
#include <unordered_map>

namespace orvanlite {

/// The text without leading and trailing spaces and tabs; line breaks stay.
[[nodiscard]] inline QStringView withoutBlanks(QStringView text)
{
    const auto isBlank = [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// The code point at the position, which is advanced past it. A lone surrogate counts as a code point.
[[nodiscard]] inline char32_t takeCodePoint(QStringView text, qsizetype& position)
{
    const QChar first = text[position++];
    if (first.isHighSurrogate() && position < text.size() && text[position].isLowSurrogate())
        return QChar::surrogateToUcs4(first, text[position++]);
    return first.unicode();
}

/// Hash of a name or a word. Qt's hash is fast for long texts but about twenty times slower for short ones.
/// Source: FNV-1a.
struct UADTextHash {
    [[nodiscard]] std::size_t operator()(QStringView text) const
    {
        std::size_t hash = 14695981039346656037ULL;
        for (const QChar c : text)
            hash = (hash ^ c.unicode()) * 1099511628211ULL;
        return hash;
    }
};

template <typename Value>
using UADTextMap = std::unordered_map<QStringView, Value, UADTextHash>;

} // namespace orvanlite
