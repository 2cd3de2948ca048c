#include "operations/PluginManagerViewModel.h"

namespace orvanlite {

void PluginManagerViewModel::updateCachedTransfer()
{
    if (persistedSelections.isEmpty()) {
        if (!cachedPluginKeysTransfer->keys.isEmpty())
            cachedPluginKeysTransfer.clear();
        return;
    }
    PluginKeyTransfer transfer;
    for (const AudioPlugin& plugin : m_database.getPluginsByIds(persistedSelections))
        transfer.keys.append(pluginKey(plugin));
    cachedPluginKeysTransfer = std::move(transfer);
}

void PluginManagerViewModel::clearSelection()
{
    persistedSelections.clear();
    selectedPlugins.clear();
    updateCachedTransfer();
    bulkActiveVariants.clear();
    consolidatedBulkPlugins.clear();
}

} // namespace orvanlite
