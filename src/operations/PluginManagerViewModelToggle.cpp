#include "operations/PluginManagerViewModel.h"

#include "operations/OperationErrors.h"
#include "operations/ShellQuoting.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "records/ActivityLogManager.h"

#include <QPointer>
#include <QScopeGuard>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

QString parentFolder(const QString& path)
{
    return path.first(std::max<qsizetype>(path.lastIndexOf(u'/'), 0));
}

QString lastComponent(const QString& path) { return path.sliced(path.lastIndexOf(u'/') + 1); }

/// A file name split at its last dot; a leading dot starts no extension.
struct FileName {
    QString base;
    QString extension;
};

FileName splitName(const QString& name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0 || dot == name.size() - 1)
        return {name, {}};
    return {name.first(dot), name.sliced(dot + 1)};
}

/// Empties the system's cache of Audio Units and ends its registrar, which then reads the folders anew.
/// On purpose: the closing "true" hides a failed move as well as a failed flush.
QString audioUnitCacheFlush(const platform::SystemLayout& layout)
{
    const QString cache =
        layout.isSandbox() ? shellQuoted(layout.audioUnitSystemCache()) : layout.audioUnitSystemCache();
    return u" && rm -rf ~/Library/Caches/AudioUnitCache/* "_s + cache +
           u" 2>/dev/null && killall -9 AudioComponentRegistrar 2>/dev/null; true"_s;
}

} // namespace

QCoro::Task<> PluginManagerViewModel::togglePlugin(AudioPlugin plugin)
{
    const QPointer<PluginManagerViewModel> self(this);
    if (plugin.format == PluginFormat::wavesBundle) {
        // All installed versions of a Waves plugin go together.
        AudioPlugins matches = allWavesPluginsMatchingName(plugin.name);
        if (matches.size() >= 2) {
            co_await toggleMultiplePlugins(std::move(matches));
            co_return;
        }
    }
    const bool wasEnabled = plugin.isEnabled;
    std::optional<PluginError> failure;
    try {
        const PluginOperation operation = wasEnabled ? PluginOperation::disable : PluginOperation::enable;
        const AudioPlugin changed = co_await performPluginOperation(plugin, operation);
        if (!self)
            co_return;
        m_database.updatePlugin(changed);
        refreshAllState();
        m_activityLog.log(changed.name, rawValue(changed.format),
                          wasEnabled ? ActivityAction::disabled : ActivityAction::enabled);
        if (changed.format == PluginFormat::wavesBundle && !wasEnabled)
            runWavesAURegUtilities();
    } catch (const std::exception& thrown) {
        failure = toPluginError(thrown);
    }
    if (failure && self)
        error = failure;
}

QString PluginManagerViewModel::disabledFolder(const AudioPlugin& plugin) const
{
    switch (plugin.format) {
    case PluginFormat::aax:
        return m_platform.layout.aaxUnusedDirectory();
    case PluginFormat::wavesBundle:
        return parentFolder(plugin.originalPath) + u"/Disabled"_s;
    default:
        return m_platform.layout.centralDisabledDirectory() + u'/' + rawValue(plugin.format);
    }
}

QString PluginManagerViewModel::disabledDestination(const AudioPlugin& plugin) const
{
    const QString folder = disabledFolder(plugin) + u'/';
    const QString name = lastComponent(plugin.currentPath);
    QString destination = folder + name;
    const FileName parts = splitName(name);
    for (int n = 1; m_platform.files.exists(destination); ++n)
        destination = folder + parts.base + u' ' + QString::number(n) + u'.' + parts.extension;
    return destination;
}

QCoro::Task<AudioPlugin> PluginManagerViewModel::performPluginOperation(AudioPlugin plugin,
                                                                        PluginOperation operation)
{
    const bool enables = operation == PluginOperation::enable;
    const QString destination = enables ? plugin.originalPath : disabledDestination(plugin);
    // On purpose: the place where the plugin belongs decides, not the rights that are really needed.
    const bool isSystems = m_platform.layout.isInSystemLibrary(plugin.originalPath);
    if (isSystems || plugin.format == PluginFormat::wavesBundle) {
        const bool clearAUCache = isSystems && plugin.format == PluginFormat::au;
        co_await performWithAdminRights(plugin.currentPath, destination, operation, clearAUCache);
    } else {
        performFileOperation(plugin.currentPath, destination);
    }
    plugin.currentPath = destination;
    plugin.isEnabled = enables;
    co_return plugin;
}

void PluginManagerViewModel::performFileOperation(const QString& source, const QString& destination)
{
    // On purpose: enabling replaces what has meanwhile taken the plugin's place, without a question.
    if (m_platform.files.exists(destination))
        m_platform.files.remove(destination);
    m_platform.files.move(source, destination);
}

QCoro::Task<> PluginManagerViewModel::performWithAdminRights(QString source, QString destination,
                                                             PluginOperation operation, bool clearAUCache)
{
    QString command;
    if (operation == PluginOperation::disable)
        command = u"mkdir -p "_s + shellQuoted(parentFolder(destination)) + u" && "_s;
    command += u"mv "_s + shellQuoted(source) + u' ' + shellQuoted(destination);
    if (clearAUCache)
        command += audioUnitCacheFlush(m_platform.layout);
    // On purpose: the command is not escaped for the string that it stands in, so a path with an apostrophe ends
    // as a script that does not compile.
    const QString script = u"do shell script \""_s + command + u"\" with administrator privileges"_s;

    const platform::ScriptOutcome outcome = co_await runScript(script);
    if (outcome.succeeded())
        co_return;
    if (outcome.error && !outcome.error->isEmpty())
        throw PluginError(PluginError::Kind::permissionDenied, platform::description(*outcome.error));
    throw PluginError(PluginError::Kind::unknownError, u"Failed to execute AppleScript"_s);
}

QCoro::Task<platform::ScriptOutcome> PluginManagerViewModel::runScript(QString source)
{
    isRunningScript = true;
    // However the script ends: with the mark left on, the windows would take no input ever again.
    const auto finish = [self = QPointer<PluginManagerViewModel>(this)] {
        if (self)
            self->isRunningScript = false;
    };
    const auto atEnd = qScopeGuard(finish);
    co_return co_await m_platform.scripts.execute(source);
}

} // namespace orvanlite
