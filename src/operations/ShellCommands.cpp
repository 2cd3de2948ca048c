#include "operations/ShellCommands.h"

#include "platform/Path.h"
#include "platform/SystemLayout.h"

#include <QStringList>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

QString shellQuoted(const QString& text)
{
    QString quoted = text;
    quoted.replace(u'\'', QStringLiteral(R"('"'"')"));
    return u'\'' + quoted + u'\'';
}

QString administratorScript(const QString& command)
{
    return u"do shell script \""_s + command + u"\" with administrator privileges"_s;
}

QString moveCommand(const QString& source, const QString& destination, ParentFolder parent)
{
    const QString move = u"mv "_s + shellQuoted(source) + u' ' + shellQuoted(destination);
    if (parent == ParentFolder::mustExist)
        return move;
    return u"mkdir -p "_s + shellQuoted(platform::parentFolder(destination)) + u" && "_s + move;
}

QString audioUnitCacheFlush(const platform::SystemLayout& layout)
{
    const QString cache =
        layout.isSandbox() ? shellQuoted(layout.audioUnitSystemCache()) : layout.audioUnitSystemCache();
    return u" && rm -rf ~/Library/Caches/AudioUnitCache/* "_s + cache +
           u" 2>/dev/null && killall -9 AudioComponentRegistrar 2>/dev/null; true"_s;
}

QString deletionCommand(const AudioPlugins& plugins)
{
    QStringList commands;
    for (const AudioPlugin& plugin : plugins)
        commands.append(u"rm -rf "_s + shellQuoted(plugin.currentPath));
    return commands.join(u" && "_s);
}

QString batchScript(const std::vector<BatchItem>& items, const QString& progressFile)
{
    const QString counterLine = u"n=$((n+1)) && printf '%d' $n > "_s + shellQuoted(progressFile);
    QStringList lines{u"#!/bin/sh"_s, u"n=0"_s};
    lines.reserve(2 + 2 * std::ssize(items));
    for (const BatchItem& item : items) {
        lines.append(moveCommand(item.source, item.destination, ParentFolder::create));
        lines.append(counterLine);
    }
    return lines.join(u'\n');
}

std::optional<double> batchProgress(QByteArrayView counter, qsizetype items)
{
    bool isNumber = false;
    const qlonglong count = counter.trimmed().toLongLong(&isNumber);
    if (!isNumber || items <= 0)
        return std::nullopt;
    return std::clamp(static_cast<double>(count) / static_cast<double>(items), 0.0, 1.0);
}

QString batchAppleScript(const QString& scriptFile)
{
    const QString quoted = shellQuoted(scriptFile);
    return administratorScript(u"chmod +x "_s + quoted + u" && "_s + quoted);
}

} // namespace orvanlite
