#include "operations/PluginMover.h"

#include "model/PluginError.h"
#include "model/Uuid.h"
#include "operations/BatchProgress.h"
#include "operations/Detach.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/Platform.h"

#include <QScopeGuard>

#include <chrono>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kPollInterval{80};
constexpr qint64 kLargestCounter = 64; // bytes

enum class ScriptKind { toggle, batch, deletion };

/// The one place that turns the outcome of a script into an error.
/// On purpose a batch fails by an error dictionary alone, so that one without any answer counts as done, while the
/// others need a result.
void throwFailure(const platform::ScriptOutcome& outcome, ScriptKind kind)
{
    using Kind = PluginError::Kind;
    const auto& error = outcome.error;
    if (kind == ScriptKind::batch) {
        if (error)
            throw PluginError(
                Kind::permissionDenied,
                error->value(platform::kScriptErrorMessageKey.toString(), u"AppleScript error"_s));
        return;
    }
    if (outcome.succeeded())
        return;
    if (error && !error->isEmpty())
        throw PluginError(Kind::permissionDenied, platform::description(*error));
    throw PluginError(Kind::unknownError, kind == ScriptKind::toggle ? u"Failed to execute AppleScript"_s
                                                                     : u"Failed to delete plugins"_s);
}

AudioPlugin toggled(AudioPlugin plugin, const QString& destination)
{
    plugin.currentPath = destination;
    plugin.isEnabled = !plugin.isEnabled;
    return plugin;
}

void removeQuietly(platform::FileManager& files, const QString& path)
{
    try {
        files.remove(path);
    } catch (const platform::FileError&) {
        // Nobody needs it any more, and the next batch has names of its own.
    }
}

} // namespace

PluginMover::PluginMover(const platform::Platform& platform)
    : m_platform(platform)
    , m_locations(platform.layout)
{}

QString PluginMover::destination(const AudioPlugin& plugin) const
{
    if (!plugin.isEnabled)
        return plugin.originalPath;
    return freeName(m_locations.disabledFolder(plugin), platform::fileName(plugin.currentPath));
}

QString PluginMover::freeName(const QString& folder, const QString& name) const
{
    const QString base = platform::join(folder, platform::baseName(name));
    QString path = platform::join(folder, name);
    // On purpose the dot is there without an extension too.
    for (int n = 1; m_platform.files.exists(path); ++n)
        path = base + u' ' + QString::number(n) + u'.' + platform::extension(name).toString();
    return path;
}

QCoro::Task<AudioPlugin> PluginMover::toggle(AudioPlugin plugin)
{
    const auto self = shared_from_this();
    const QString path = destination(plugin);
    // On purpose where the plugin belongs decides, not the rights that are really needed.
    if (m_platform.layout.isInSystemLibrary(plugin.originalPath) ||
        plugin.format == PluginFormat::wavesBundle)
        co_await performWithAdminRights(plugin, path);
    else
        performFileOperation(plugin.currentPath, path);
    co_return toggled(std::move(plugin), path);
}

void PluginMover::performFileOperation(const QString& source, const QString& destination) const
{
    platform::FileManager& files = m_platform.files;
    if (!files.exists(destination)) {
        files.move(source, destination);
        return;
    }
    // On purpose enabling replaces whatever has taken the plugin's place, without a question. It is set aside until the
    // plugin is there, so that a failed move loses neither of them.
    const QString aside =
        platform::join(platform::parentFolder(destination), u".orvanlite-"_s + uuidText(makeUuid()));
    files.move(destination, aside);
    try {
        files.move(source, destination);
    } catch (const platform::FileError&) {
        files.move(aside, destination);
        throw;
    }
    try {
        files.remove(aside);
    } catch (const platform::FileError&) {
        files.move(destination, source);
        files.move(aside, destination);
        throw;
    }
}

QCoro::Task<> PluginMover::performWithAdminRights(AudioPlugin plugin, QString destination)
{
    QString command = moveCommand(plugin.currentPath, destination,
                                  plugin.isEnabled ? ParentFolder::create : ParentFolder::mustExist);
    if (plugin.format == PluginFormat::au && m_platform.layout.isInSystemLibrary(plugin.originalPath))
        command += audioUnitCacheFlush(m_platform.layout);
    const platform::ScriptOutcome outcome = co_await run(administratorScript(command));
    throwFailure(outcome, ScriptKind::toggle);
}

QCoro::Task<AudioPlugins> PluginMover::toggleAll(AudioPlugins plugins, BatchProgress* progress)
{
    const auto self = shared_from_this();
    std::vector<BatchItem> items;
    items.reserve(plugins.size());
    for (AudioPlugin& plugin : plugins) {
        const QString path = destination(plugin);
        const QString source = plugin.currentPath;
        items.push_back({std::move(plugin), source, path});
    }
    platform::FileManager& files = m_platform.files;
    const QString uuid = uuidText(makeUuid());
    const QString& folder = m_platform.layout.temporary;
    const QString scriptFile = platform::join(folder, u"orvanlite_batch_"_s + uuid + u".sh"_s);
    const QString progressFile = platform::join(folder, u"orvanlite_progress_"_s + uuid + u".txt"_s);
    // Readable by their owner alone and put in place whole: nobody else can read or replace them before they run.
    files.write(progressFile, "0", platform::WriteMode::privateFile);
    files.write(scriptFile, batchScript(items, progressFile).toUtf8(), platform::WriteMode::privateFile);

    const auto isCancelled = std::make_shared<bool>(false);
    if (progress)
        detach(pollProgress(progressFile, std::ssize(items), progress, isCancelled));
    const platform::ScriptOutcome outcome = co_await run(batchAppleScript(scriptFile));
    *isCancelled = true;
    removeQuietly(files, scriptFile);
    removeQuietly(files, progressFile);
    throwFailure(outcome, ScriptKind::batch);

    for (std::size_t i = 0; i < items.size(); ++i)
        plugins[i] = toggled(std::move(items[i].plugin), items[i].destination);
    co_return plugins;
}

QCoro::Task<> PluginMover::remove(AudioPlugins plugins)
{
    const auto self = shared_from_this();
    const platform::ScriptOutcome outcome = co_await run(administratorScript(deletionCommand(plugins)));
    throwFailure(outcome, ScriptKind::deletion);
}

QCoro::Task<platform::ScriptOutcome> PluginMover::run(QString source)
{
    if (++m_runningScripts == 1)
        isRunningScript = true;
    // However the script ends: otherwise the windows would never take input again.
    const auto atEnd = qScopeGuard([this] {
        if (--m_runningScripts == 0)
            isRunningScript = false;
    });
    co_return co_await m_platform.scripts.execute(source);
}

QCoro::Task<> PluginMover::pollProgress(QString progressFile, qsizetype total, BatchProgress* progress,
                                        std::shared_ptr<bool> isCancelled)
{
    const auto self = shared_from_this();
    while (!*isCancelled) {
        const std::optional<QByteArray> text = m_platform.files.read(progressFile, kLargestCounter);
        bool isNumber = false;
        const qlonglong count = text ? text->trimmed().toLongLong(&isNumber) : 0;
        if (isNumber && total > 0)
            progress->setProgress(std::clamp(double(count) / double(total), 0.0, 1.0));
        co_await m_platform.clock.sleepFor(kPollInterval);
    }
}

} // namespace orvanlite
