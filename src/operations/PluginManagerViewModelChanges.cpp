#include "operations/BatchProgress.h"
#include "operations/OperationErrors.h"
#include "operations/PluginManagerViewModel.h"
#include "operations/PluginMover.h"
#include "records/ActivityLogManager.h"

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Minimum number of plugins for the progress panel.
constexpr std::ptrdiff_t kPanelCount = 51;

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

bool isDisabledWaves(const AudioPlugin& plugin)
{
    return plugin.format == PluginFormat::wavesBundle && !plugin.isEnabled;
}

/// Awaits a change and stores its failure in `error` and `workStatus`.
QCoro::Task<> reportFailure(QPointer<PluginManagerViewModel> self, QCoro::Task<> change)
{
    std::optional<PluginError> failure;
    WorkStatus outcome;
    try {
        co_await std::move(change);
    } catch (const std::exception& thrown) {
        failure = toPluginError(thrown);
        outcome = workFailure(thrown);
    }
    if (!self)
        co_return;
    if (failure)
        self->error = failure;
    self->workStatus = outcome;
}

} // namespace

QCoro::Task<> PluginManagerViewModel::togglePlugin(AudioPlugin plugin)
{
    const QPointer<PluginManagerViewModel> self(this);
    if (plugin.format == PluginFormat::wavesBundle) {
        // All installed versions of a Waves plugin are toggled together.
        AudioPlugins matches = allWavesPluginsMatchingName(plugin.name);
        if (matches.size() >= 2)
            return toggleMultiplePlugins(std::move(matches));
    }
    return reportFailure(self, toggleOne(std::move(plugin)));
}

QCoro::Task<> PluginManagerViewModel::toggleMultiplePlugins(AudioPlugins batch)
{
    const QPointer<PluginManagerViewModel> self(this);
    return reportFailure(self, toggleBatch(std::move(batch)));
}

QCoro::Task<> PluginManagerViewModel::deletePlugins(AudioPlugins pluginsToDelete)
{
    const QPointer<PluginManagerViewModel> self(this);
    return reportFailure(self, deleteAll(std::move(pluginsToDelete)));
}

QCoro::Task<> PluginManagerViewModel::toggleOne(AudioPlugin plugin)
{
    const QPointer<PluginManagerViewModel> self(this);
    const AudioPlugin changed = co_await m_mover->toggle(plugin);
    if (!self)
        co_return;
    m_database.updatePlugin(changed);
    refreshAllState();
    m_activityLog.log(changed.name, rawValue(changed.format),
                      changed.isEnabled ? ActivityAction::enabled : ActivityAction::disabled);
    if (isDisabledWaves(plugin))
        runWavesAURegUtilities();
}

QCoro::Task<> PluginManagerViewModel::toggleBatch(AudioPlugins batch)
{
    const QPointer<PluginManagerViewModel> self(this);
    BatchProgress* panel = std::ssize(batch) >= kPanelCount ? m_batchProgress : nullptr;
    if (panel)
        panel->show(progressLabel(batch), static_cast<int>(batch.size()));
    // Even if this object no longer exists by then: the panel is a separate window.
    const auto atEnd = qScopeGuard([panel] {
        if (panel)
            panel->hide();
    });
    const AudioPlugins updated = co_await m_mover->toggleAll(batch, m_batchProgress);
    if (self)
        recordBatch(batch, updated);
}

void PluginManagerViewModel::recordBatch(const AudioPlugins& batch, const AudioPlugins& updated)
{
    m_database.updatePlugins(updated);
    refreshAllState();
    logBatch(batch, false);
    logBatch(batch, true);
    if (std::any_of(batch.begin(), batch.end(), isDisabledWaves))
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

QCoro::Task<> PluginManagerViewModel::deleteAll(AudioPlugins pluginsToDelete)
{
    const QPointer<PluginManagerViewModel> self(this);
    co_await m_mover->remove(pluginsToDelete);
    if (!self)
        co_return;
    QSet<QUuid> ids;
    std::vector<LoggedPlugin> logged;
    for (const AudioPlugin& plugin : pluginsToDelete) {
        ids.insert(plugin.id);
        logged.push_back({plugin.name, rawValue(plugin.format)});
    }
    m_database.deletePlugins(pluginsToDelete);
    forget(ids);
    refreshAllState();
    m_activityLog.logBatch(logged, ActivityAction::deleted);
}

} // namespace orvanlite
