#pragma once

#include <QStringList>

#include <algorithm>
#include <vector>

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

/// The positions of the texts in ascending localizedCompare() order; equal texts keep their order.
[[nodiscard]] std::vector<std::size_t> localizedOrder(const QStringList& texts);

/// Sorts by localizedOrder() of what `text` returns for each element.
template <typename Item, typename Text>
void localizedSort(std::vector<Item>& items, Text text)
{
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(items.size()));
    for (const Item& item : items)
        texts.append(text(item));
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (const std::size_t position : localizedOrder(texts))
        sorted.push_back(std::move(items[position]));
    items = std::move(sorted);
}

/// Whether a text holds another by a localised, case-insensitive comparison.
[[nodiscard]] bool localizedContains(QStringView text, QStringView part);

} // namespace orvanlite
