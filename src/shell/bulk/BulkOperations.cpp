#include "shell/bulk/BulkOperations.h"

#include "operations/PluginManagerViewModel.h"
#include "shell/bulk/BulkConfirmation.h"

#include <QPointer>

namespace orvanlite {

namespace {

/// All filtered plugins in one state, optionally of one format only.
AudioPlugins filteredPlugins(const PluginManagerViewModel& viewModel, bool isEnabled,
                             std::optional<PluginFormat> format)
{
    AudioPlugins matches = viewModel.allFilteredPlugins();
    std::erase_if(matches, [&](const AudioPlugin& each) {
        return each.isEnabled != isEnabled || (format && each.format != *format);
    });
    return matches;
}

} // namespace

QCoro::Task<> performBulkAction(PluginManagerViewModel* viewModel, BulkConfirmation* confirmation,
                                BulkAction pendingAction, AudioPlugins plugins)
{
    const QPointer<PluginManagerViewModel> alive(viewModel);
    if (pendingAction == BulkAction::delete_)
        co_await viewModel->deletePlugins(std::move(plugins));
    else
        co_await viewModel->toggleMultiplePlugins(
            std::move(plugins)); // each plugin changes to its other state
    if (!alive)
        co_return;
    confirmation->pendingAction.reset();
    confirmation->pendingPlugins.clear();
    confirmation->isShowing = false;
}

QCoro::Task<> enableAllForFormat(PluginManagerViewModel* viewModel, std::optional<PluginFormat> format)
{
    AudioPlugins disabled = filteredPlugins(*viewModel, false, format);
    co_await viewModel->toggleMultiplePlugins(std::move(disabled));
}

QCoro::Task<> disableAllForFormat(PluginManagerViewModel* viewModel, std::optional<PluginFormat> format)
{
    AudioPlugins enabled = filteredPlugins(*viewModel, true, format);
    co_await viewModel->toggleMultiplePlugins(std::move(enabled));
}

} // namespace orvanlite
