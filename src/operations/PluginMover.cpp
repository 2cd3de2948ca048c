#include "operations/PluginMover.h"

#include "model/PluginError.h"
#include "model/Uuid.h"
#include "operations/BatchProgress.h"
#include "operations/Detach.h"
#include "operations/OperationErrors.h"
#include "operations/PartialCopies.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/Platform.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include <chrono>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kPollInterval{80};
constexpr qint64 kLargestCounter = 64; // bytes

enum class ScriptKind { toggle, batch, deletion };

/// Turns the outcome of a script into an error. On purpose a batch fails only with an error dictionary: one
/// without any reply counts as done. The other kinds need a result.
void throwFailure(const platform::ScriptOutcome& outcome, ScriptKind kind)
{
    using Kind = PluginError::Kind;
    const auto& error = outcome.error;
    if (kind == ScriptKind::batch) {
        if (error)
            throw ScriptError(
                error->value(platform::kScriptErrorMessageKey.toString(), u"AppleScript error"_s), *error);
        return;
    }
    if (outcome.succeeded())
        return;
    if (error && !error->isEmpty())
        throw ScriptError(platform::description(*error), *error);
    throw PluginError(Kind::unknownError, kind == ScriptKind::toggle ? u"Failed to execute AppleScript"_s
                                                                     : u"Failed to delete plugins"_s);
}

/// Whether the commands have ended by themselves. After a cancelled prompt none has run, and one of a shell
/// that was killed (an exit status above 128) or has not answered may still be running.
bool hasRunToItsEnd(const platform::ScriptOutcome& outcome)
{
    if (!outcome.error || outcome.error->isEmpty())
        return outcome.result.has_value();
    const int number = outcome.error->value(platform::kScriptErrorNumberKey.toString()).toInt();
    return number > 0 && number <= 128;
}

AudioPlugin toggled(AudioPlugin plugin, const QString& destination)
{
    plugin.currentPath = destination;
    plugin.isEnabled = !plugin.isEnabled;
    return plugin;
}

/// A batch's script and progress file. Removed when the script has ended, or when the application quits
/// before that: a shell continues with a script that it has opened, and a prompt that is still open then runs
/// nothing.
class BatchFiles {
public:
    BatchFiles(platform::FileManager& files, const QString& folder)
        : BatchFiles(files, folder, uuidText(makeUuid()))
    {}
    BatchFiles(const BatchFiles&) = delete;
    BatchFiles& operator=(const BatchFiles&) = delete;
    ~BatchFiles() { QObject::disconnect(m_atQuit); }

    const QString script;
    const QString progress;

    void remove() const
    {
        for (const QString& file : {script, progress}) {
            try {
                m_files.remove(file);
            } catch (const platform::FileError&) {
                // A left-over file is harmless: the next batch uses new names.
            }
        }
    }

private:
    BatchFiles(platform::FileManager& files, const QString& folder, const QString& uuid)
        : script(platform::join(folder, u"orvanlite_batch_"_s + uuid + u".sh"_s))
        , progress(platform::join(folder, u"orvanlite_progress_"_s + uuid + u".txt"_s))
        , m_files(files)
        , m_atQuit(QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                                    QCoreApplication::instance(), [this] { remove(); }))
    {}

    platform::FileManager& m_files;
    QMetaObject::Connection m_atQuit;
};

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
    // On purpose the dot is added even without an extension.
    for (int n = 1; m_platform.files.exists(path); ++n)
        path = base + u' ' + QString::number(n) + u'.' + platform::extension(name).toString();
    return path;
}

QCoro::Task<AudioPlugin> PluginMover::toggle(AudioPlugin plugin)
{
    const auto self = shared_from_this();
    const QString path = destination(plugin);
    // On purpose decided by the plugin's original path, not by the rights that are actually needed.
    if (m_platform.layout.isInSystemLibrary(plugin.originalPath) ||
        plugin.format == PluginFormat::wavesBundle)
        co_await performWithAdminRights(plugin, path);
    else
        performFileOperation(plugin.currentPath, path);
    co_return toggled(plugin, path);
}

void PluginMover::performFileOperation(const QString& source, const QString& destination) const
{
    platform::FileManager& files = m_platform.files;
    if (!files.exists(destination)) {
        files.move(source, destination);
        return;
    }
    // On purpose enabling replaces an existing file at the destination without asking. That file is set aside
    // until the move has succeeded, so that a failure loses neither.
    const QString aside =
        platform::join(platform::parentFolder(destination), u".orvanlite-"_s + uuidText(makeUuid()));
    try {
        files.move(destination, aside);
    } catch (const platform::FileError& error) {
        throw platform::FileError(error.code, destination); // nobody knows the hidden path
    }
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
    std::vector<BatchItem> items(1);
    items[0].source = plugin.currentPath;
    items[0].destination = destination;
    const PartialCopies copies(m_platform.files, items);
    const platform::ScriptOutcome outcome = co_await run(administratorScript(command), movingPlugins(1));
    if (hasRunToItsEnd(outcome))
        copies.remove();
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
    const BatchFiles batch(files, m_platform.layout.temporary);
    // Private and written atomically, so that no other user can read or replace them before they run.
    files.write(batch.progress, "0", platform::WriteMode::privateFile);
    files.write(batch.script, batchScript(items, batch.progress).toUtf8(), platform::WriteMode::privateFile);

    const PartialCopies copies(files, items);
    const auto isCancelled = std::make_shared<bool>(false);
    if (progress)
        detach(pollProgress(batch.progress, std::ssize(items), progress, isCancelled));
    const platform::ScriptOutcome outcome =
        co_await run(batchAppleScript(batch.script), movingPlugins(std::ssize(items)));
    *isCancelled = true;
    batch.remove();
    if (hasRunToItsEnd(outcome))
        copies.remove();
    throwFailure(outcome, ScriptKind::batch);

    for (std::size_t i = 0; i < items.size(); ++i)
        plugins[i] = toggled(std::move(items[i].plugin), items[i].destination);
    co_return plugins;
}

QCoro::Task<> PluginMover::remove(AudioPlugins plugins)
{
    const auto self = shared_from_this();
    const platform::ScriptOutcome outcome =
        co_await run(administratorScript(deletionCommand(plugins)), deletingPlugins(std::ssize(plugins)));
    throwFailure(outcome, ScriptKind::deletion);
}

QCoro::Task<platform::ScriptOutcome> PluginMover::run(QString source, WorkStatus work)
{
    if (++m_runningScripts == 1)
        isRunningScript = true;
    workStatus = waitingForPassword();
    // Even if the script throws: otherwise the windows would never accept input again.
    const auto atEnd = qScopeGuard([this] {
        if (--m_runningScripts == 0)
            isRunningScript = false;
    });
    std::function<void()> started = [self = shared_from_this(), work] { self->begin(work); };
    co_return co_await m_platform.scripts.execute(source, std::move(started));
}

void PluginMover::begin(const WorkStatus& work)
{
    if (workStatus->state == WorkStatus::State::waitingForPassword)
        workStatus = work;
}

QCoro::Task<> PluginMover::pollProgress(QString progressFile, qsizetype total, BatchProgress* progress,
                                        std::shared_ptr<bool> isCancelled)
{
    const auto self = shared_from_this();
    while (!*isCancelled) {
        const std::optional<QByteArray> text = m_platform.files.read(progressFile, kLargestCounter);
        const auto done = text ? batchProgress(*text, total) : std::nullopt;
        if (done && *done > 0)
            begin(movingPlugins(total)); // on systems that do not report the start
        if (done)
            progress->setProgress(*done);
        co_await m_platform.clock.sleepFor(kPollInterval);
    }
}

} // namespace orvanlite
