#pragma once

#include "model/AudioPlugin.h"
#include "operations/BulkAction.h"

#include <qcorotask.h>

#include <optional>

namespace orvanlite {

class PluginManagerViewModel;
struct BulkConfirmation;

/// Does what was confirmed with exactly these plugins, and then clears the question.
QCoro::Task<> performBulkAction(PluginManagerViewModel* viewModel, BulkConfirmation* confirmation,
                                BulkAction pendingAction, AudioPlugins plugins);

/// Enables everything that the filters match and that is off; with a format, only what is of it.
QCoro::Task<> enableAllForFormat(PluginManagerViewModel* viewModel, std::optional<PluginFormat> format);
/// Disables everything that the filters match and that is on; with a format, only what is of it.
QCoro::Task<> disableAllForFormat(PluginManagerViewModel* viewModel, std::optional<PluginFormat> format);

} // namespace orvanlite
