#include "model/Console.h"

#include <cstdio>

namespace orvanlite {

void printLine(const QString& text)
{
    const QByteArray line = text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
}

} // namespace orvanlite
