#pragma once

#include <QStringList>

#include <algorithm>

namespace orvanlite {

/// Plain text order: by Unicode code points, case-sensitive, without any locale.
[[nodiscard]] bool plainLess(QStringView left, QStringView right);

/// The members in ascending plain order, e.g. of a QSet of texts.
template <typename Texts>
[[nodiscard]] QStringList plainSorted(const Texts& texts)
{
    QStringList sorted(texts.begin(), texts.end());
    std::sort(sorted.begin(), sorted.end(), plainLess);
    return sorted;
}

/// Localised, case-insensitive order of the user's language: negative, zero or positive.
[[nodiscard]] int localizedCompare(QStringView left, QStringView right);

/// Whether a text holds another by a localised, case-insensitive comparison.
[[nodiscard]] bool localizedContains(QStringView text, QStringView part);

} // namespace orvanlite
