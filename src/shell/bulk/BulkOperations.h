#pragma once

#include "model/AudioPlugin.h"
#include "operations/BulkAction.h"

#include <qcorotask.h>

#include <optional>

namespace orvanlite {

class PluginManagerViewModel;
struct BulkConfirmation;

/// Performs the confirmed action on exactly these plugins, then resets the confirmation.
QCoro::Task<> performBulkAction(PluginManagerViewModel* viewModel, BulkConfirmation* confirmation,
                                BulkAction pendingAction, AudioPlugins plugins);

/// Enables all filtered plugins that are disabled, optionally of one format only.
QCoro::Task<> enableAllForFormat(PluginManagerViewModel* viewModel, std::optional<PluginFormat> format);
/// Disables all filtered plugins that are enabled, optionally of one format only.
QCoro::Task<> disableAllForFormat(PluginManagerViewModel* viewModel, std::optional<PluginFormat> format);

} // namespace orvanlite
