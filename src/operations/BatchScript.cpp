#include "operations/BatchScript.h"

#include "operations/ShellQuoting.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

QString batchScript(const std::vector<BatchItem>& items, const QString& progressFile)
{
    const QString counterLine = u"n=$((n+1)) && printf '%d' $n > "_s + shellQuoted(progressFile);
    QStringList lines;
    lines.reserve(2 + 2 * static_cast<qsizetype>(items.size()));
    lines.append(u"#!/bin/sh"_s);
    lines.append(u"n=0"_s);
    for (const BatchItem& item : items) {
        const QString folder =
            item.destination.first(std::max<qsizetype>(item.destination.lastIndexOf(u'/'), 0));
        lines.append(u"mkdir -p "_s + shellQuoted(folder) + u" && mv "_s + shellQuoted(item.source) + u' ' +
                     shellQuoted(item.destination));
        lines.append(counterLine);
    }
    return lines.join(u'\n');
}

QString batchAppleScript(const QString& scriptFile)
{
    const QString quoted = shellQuoted(scriptFile);
    return u"do shell script \"chmod +x "_s + quoted + u" && "_s + quoted +
           u"\" with administrator privileges"_s;
}

} // namespace orvanlite
