#pragma once

#include <QStringList>

#include <algorithm>

namespace orvanlite {

/// Orders by Unicode code points: case-sensitive and independent of the locale.
[[nodiscard]] bool plainLess(QStringView left, QStringView right);

/// The elements in ascending plainLess order.
template <typename Texts>
[[nodiscard]] QStringList plainSorted(const Texts& texts)
{
    QStringList sorted(texts.begin(), texts.end());
    std::sort(sorted.begin(), sorted.end(), plainLess);
    return sorted;
}

/// Case-insensitive order in the user's locale: negative, zero or positive.
[[nodiscard]] int localizedCompare(QStringView left, QStringView right);

/// Whether a text holds another by a localised, case-insensitive comparison.
[[nodiscard]] bool localizedContains(QStringView text, QStringView part);

} // namespace orvanlite
