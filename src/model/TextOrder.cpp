#include "model/TextOrder.h"

#include <QCollator>

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

int localizedCompare(QStringView left, QStringView right)
{
    static const QCollator collator = [] {
        QCollator caseInsensitive;
        caseInsensitive.setCaseSensitivity(Qt::CaseInsensitive);
        return caseInsensitive;
    }();
    return collator.compare(left, right);
}

bool localizedContains(QStringView text, QStringView part)
{
    return text.contains(part, Qt::CaseInsensitive);
}

} // namespace orvanlite
