#include "operations/PluginManagerViewModel.h"

#include "model/Uuid.h"
#include "operations/BatchProgress.h"
#include "operations/Detach.h"
#include "operations/OperationErrors.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "records/ActivityLogManager.h"

#include <QPointer>

#include <algorithm>
#include <chrono>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// From this number of plugins on the progress panel is shown.
constexpr std::ptrdiff_t kPanelCount = 51;
constexpr std::chrono::milliseconds kPollInterval{80};
constexpr qint64 kLargestCounter = 64; // bytes

QString progressLabel(const AudioPlugins& plugins)
{
    const auto total = std::ssize(plugins);
    const auto toDisable =
        std::count_if(plugins.begin(), plugins.end(), [](const AudioPlugin& each) { return each.isEnabled; });
    const auto toEnable = total - toDisable;
    if (toEnable > 0 && toDisable > 0)
        return u"Applying changes to %1 plugins…"_s.arg(total);
    if (toEnable > 0)
        return u"Enabling %1 plugins…"_s.arg(toEnable);
    return u"Disabling %1 plugins…"_s.arg(toDisable);
}

/// The script file and its counter, and their common removal when the script has ended.
class BatchFiles {
public:
    BatchFiles(platform::FileManager& files, const QString& folder, const QString& uuid)
        : script(folder + u"/orvanlite_batch_"_s + uuid + u".sh"_s)
        , progress(folder + u"/orvanlite_progress_"_s + uuid + u".txt"_s)
        , m_files(files)
    {}

    const QString script;
    const QString progress;

    void remove() const
    {
        for (const QString& file : {script, progress}) {
            try {
                m_files.remove(file);
            } catch (const platform::FileError&) {
                // It is of no use to anybody any more, and the next batch has names of its own.
            }
        }
    }

private:
    platform::FileManager& m_files;
};

} // namespace

QCoro::Task<> PluginManagerViewModel::toggleMultiplePlugins(AudioPlugins batch)
{
    const QPointer<PluginManagerViewModel> self(this);
    const int total = static_cast<int>(batch.size());
    BatchProgress* panel = total >= kPanelCount ? m_batchProgress : nullptr;
    if (panel)
        panel->show(progressLabel(batch), total);

    std::vector<BatchItem> items;
    items.reserve(batch.size());
    for (const AudioPlugin& plugin : batch) {
        const QString destination = plugin.isEnabled ? disabledDestination(plugin) : plugin.originalPath;
        items.push_back({plugin, plugin.currentPath, destination});
    }
    std::optional<PluginError> failure;
    try {
        const AudioPlugins updated = co_await performBatchOperations(std::move(items));
        if (self)
            recordBatch(batch, updated);
    } catch (const std::exception& thrown) {
        failure = toPluginError(thrown);
    }
    if (panel)
        panel->hide(); // also when the window has been closed meanwhile: the panel is a window of its own
    if (failure && self)
        error = failure;
}

void PluginManagerViewModel::recordBatch(const AudioPlugins& batch, const AudioPlugins& updated)
{
    // On purpose: one statement a row and no transaction around them.
    for (const AudioPlugin& plugin : updated)
        m_database.updatePlugin(plugin);
    refreshAllState();
    logBatch(batch, false);
    logBatch(batch, true);
    const bool hasEnabledWaves = std::any_of(batch.begin(), batch.end(), [](const AudioPlugin& each) {
        return each.format == PluginFormat::wavesBundle && !each.isEnabled;
    });
    if (hasEnabledWaves)
        runWavesAURegUtilities();
}

void PluginManagerViewModel::logBatch(const AudioPlugins& batch, bool wasEnabled)
{
    std::vector<LoggedPlugin> logged;
    for (const AudioPlugin& plugin : batch) {
        if (plugin.isEnabled == wasEnabled)
            logged.push_back({plugin.name, rawValue(plugin.format)});
    }
    if (!logged.empty())
        m_activityLog.logBatch(logged, wasEnabled ? ActivityAction::disabled : ActivityAction::enabled);
}

QCoro::Task<AudioPlugins> PluginManagerViewModel::performBatchOperations(std::vector<BatchItem> items)
{
    const BatchFiles batch(m_platform.files, m_platform.layout.temporary, uuidText(makeUuid()));
    // Readable by their owner alone and put in place whole, so that nobody can read or replace them before they run.
    m_platform.files.write(batch.progress, "0", platform::WriteMode::atomic);
    const QByteArray script = batchScript(items, batch.progress).toUtf8();
    m_platform.files.write(batch.script, script, platform::WriteMode::atomic);

    const auto isCancelled = std::make_shared<bool>(false);
    detach(pollProgress(batch.progress, static_cast<int>(items.size()), isCancelled));
    const platform::ScriptOutcome outcome = co_await runScript(batchAppleScript(batch.script));
    *isCancelled = true;
    batch.remove();
    // On purpose: only an error dictionary is a failure here. A script that could not be created counts as done.
    if (outcome.error) {
        throw PluginError(
            PluginError::Kind::permissionDenied,
            outcome.error->value(platform::kScriptErrorMessageKey.toString(), u"AppleScript error"_s));
    }
    AudioPlugins updated;
    updated.reserve(items.size());
    for (BatchItem& item : items) {
        item.plugin.currentPath = item.destination;
        item.plugin.isEnabled = !item.plugin.isEnabled;
        updated.push_back(std::move(item.plugin));
    }
    co_return updated;
}

QCoro::Task<> PluginManagerViewModel::pollProgress(QString progressFile, int total,
                                                   std::shared_ptr<bool> isCancelled)
{
    const QPointer<PluginManagerViewModel> self(this);
    while (self && !*isCancelled) {
        const std::optional<QByteArray> text = m_platform.files.read(progressFile, kLargestCounter);
        bool isNumber = false;
        const qlonglong count = text ? text->trimmed().toLongLong(&isNumber) : 0;
        if (isNumber && total > 0 && m_batchProgress)
            m_batchProgress->setProgress(std::clamp(double(count) / total, 0.0, 1.0));
        co_await m_platform.clock.sleepFor(kPollInterval);
    }
}

} // namespace orvanlite
