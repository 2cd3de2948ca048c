#pragma once

#include <QString>

namespace orvanlite {

/// The text as one word of a shell line: in single quotes, each `'` in it closed, double-quoted and reopened.
/// Paths enter a shell line only through here.
[[nodiscard]] inline QString shellQuoted(const QString& text)
{
    QString quoted = text;
    quoted.replace(u'\'', QStringLiteral(R"('"'"')"));
    return u'\'' + quoted + u'\'';
}

} // namespace orvanlite
