#include "model/TextOrder.h"

#include <QCollator>

#include <numeric>

namespace orvanlite {

bool plainLess(QStringView left, QStringView right)
{
    const qsizetype shorter = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < shorter; ++i) {
        const QChar a = left[i];
        const QChar b = right[i];
        if (a == b)
            continue;
        // A surrogate belongs to a code point above all single-unit ones.
        if (a.isSurrogate() != b.isSurrogate())
            return b.isSurrogate();
        return a < b;
    }
    return left.size() < right.size();
}

namespace {

const QCollator& localizedCollator()
{
    static const QCollator collator = [] {
        QCollator caseInsensitive;
        caseInsensitive.setCaseSensitivity(Qt::CaseInsensitive);
        return caseInsensitive;
    }();
    return collator;
}

} // namespace

int localizedCompare(QStringView left, QStringView right) { return localizedCollator().compare(left, right); }

std::vector<std::size_t> localizedOrder(const QStringList& texts)
{
    std::vector<std::size_t> order(static_cast<std::size_t>(texts.size()));
    std::iota(order.begin(), order.end(), 0);
    const auto text = [&texts](std::size_t position) {
        return QStringView(texts[static_cast<qsizetype>(position)]);
    };
    const QCollator& collator = localizedCollator();
    if (collator.locale() == QLocale::c()) {
        // Qt's sort keys are case-sensitive in this locale, unlike its comparison.
        std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
            return collator.compare(text(left), text(right)) < 0;
        });
        return order;
    }
    std::vector<QCollatorSortKey> keys;
    keys.reserve(order.size());
    for (const QString& each : texts)
        keys.push_back(collator.sortKey(each));
    std::stable_sort(order.begin(), order.end(),
                     [&keys](std::size_t left, std::size_t right) { return keys[left] < keys[right]; });
    return order;
}

bool localizedContains(QStringView text, QStringView part)
{
    return text.contains(part, Qt::CaseInsensitive);
}

} // namespace orvanlite
