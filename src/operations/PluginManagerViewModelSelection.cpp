#include "operations/PluginManagerViewModel.h"

#include <algorithm>

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

void PluginManagerViewModel::collectSelection(const QSet<QUuid>& added)
{
    persistedSelections.unite(added);
    refreshBulkPane();
    updateCachedTransfer();
}

void PluginManagerViewModel::invertSelection()
{
    // On purpose: the earlier selection plays no part, and neither does the favourites list.
    const QSet<QUuid> filtered =
        m_database.getAllFilteredPluginIds({*searchText, *selectedFormats, *selectedManufacturers, {}});
    persistedSelections = m_database.getAllFilteredPluginIds({}).subtract(filtered);
    selectedPlugins.clear(); // also renews the transfer
    refreshBulkPane();
}

std::vector<AudioPlugin> PluginManagerViewModel::selectedRecords() const
{
    return m_database.getPluginsByIds(persistedSelections);
}

void PluginManagerViewModel::removeFromSelection(const std::function<bool(const AudioPlugin&)>& isMeant)
{
    QSet<QUuid> meant;
    for (const AudioPlugin& plugin : selectedRecords()) {
        if (isMeant(plugin))
            meant.insert(plugin.id);
    }
    if (!meant.isEmpty()) {
        persistedSelections.subtract(meant);
        selectedPlugins = QSet<QUuid>(*selectedPlugins).subtract(meant); // also renews the transfer
    }
    refreshBulkPane();
}

void PluginManagerViewModel::removeWavesPluginsFromSelection()
{
    removeFromSelection([](const AudioPlugin& plugin) {
        return plugin.name.toLower().contains(QLatin1StringView("waveshell"));
    });
}

void PluginManagerViewModel::deselectPluginsByName(const QString& name)
{
    removeFromSelection([&name](const AudioPlugin& plugin) { return plugin.name == name; });
}

bool PluginManagerViewModel::selectionContainsWavesBundleToDisable() const
{
    const AudioPlugins records = bulkActionPlugins();
    return std::any_of(records.begin(), records.end(), [](const AudioPlugin& each) {
        return each.format == PluginFormat::wavesBundle && each.isEnabled;
    });
}

} // namespace orvanlite
