#include "operations/BulkSelection.h"

#include "catalogue/PluginDatabase.h"
#include "model/TextOrder.h"

#include <QHash>

#include <algorithm>

namespace orvanlite {

namespace {

void sortByName(AudioPlugins& plugins)
{
    std::stable_sort(plugins.begin(), plugins.end(), [](const AudioPlugin& left, const AudioPlugin& right) {
        return localizedCompare(left.name, right.name) < 0;
    });
}

} // namespace

BulkSelection::BulkSelection(const PluginDatabase& database, QObject* context)
    : m_database(database)
{
    selectedPlugins.observe(context, [this] { updateCachedTransfer(); });
}

void BulkSelection::clearSelection()
{
    persistedSelections.clear();
    selectedPlugins.clear();
    updateCachedTransfer();
    bulkActiveVariants.clear();
    consolidatedBulkPlugins.clear();
}

void BulkSelection::collectSelection(const QSet<QUuid>& added)
{
    persistedSelections.unite(added);
    refreshBulkPane();
    updateCachedTransfer();
}

void BulkSelection::selectOutside(const PluginFilter& filter)
{
    const QSet<QUuid> filtered = m_database.getAllFilteredPluginIds(filter);
    persistedSelections = m_database.getAllFilteredPluginIds({}).subtract(filtered);
    selectedPlugins.clear(); // updates the transfer too
    refreshBulkPane();
}

void BulkSelection::selectLoaded(const AudioPlugins& rows)
{
    if (persistedSelections.isEmpty())
        return;
    QSet<QUuid> loaded;
    for (const AudioPlugin& plugin : rows) {
        if (persistedSelections.contains(plugin.id))
            loaded.insert(plugin.id);
    }
    selectedPlugins = std::move(loaded);
    updateCachedTransfer();
}

void BulkSelection::forget(const QSet<QUuid>& ids)
{
    selectedPlugins = QSet<QUuid>(*selectedPlugins).subtract(ids);
    updateCachedTransfer();
    persistedSelections.subtract(ids);
}

void BulkSelection::removeFromSelection(const std::function<bool(const AudioPlugin&)>& isMeant)
{
    QSet<QUuid> meant;
    for (const AudioPlugin& plugin : selectedRecords()) {
        if (isMeant(plugin))
            meant.insert(plugin.id);
    }
    if (!meant.isEmpty()) {
        persistedSelections.subtract(meant);
        selectedPlugins = QSet<QUuid>(*selectedPlugins).subtract(meant); // updates the transfer too
    }
    refreshBulkPane();
}

void BulkSelection::removeWavesPluginsFromSelection()
{
    removeFromSelection([](const AudioPlugin& plugin) {
        return plugin.name.toLower().contains(QLatin1StringView("waveshell"));
    });
}

void BulkSelection::deselectPluginsByNames(const QSet<QString>& names)
{
    removeFromSelection([&names](const AudioPlugin& plugin) { return names.contains(plugin.name); });
}

void BulkSelection::refreshBulkPane()
{
    AudioPlugins records = selectedRecords();
    sortByName(records);
    std::vector<ConsolidatedPlugin> groups;
    QHash<QString, std::size_t> groupOfName;
    QSet<QUuid> currentIds;
    for (const AudioPlugin& record : records) {
        const auto known = groupOfName.constFind(record.name);
        const std::size_t group = known != groupOfName.constEnd() ? *known : groups.size();
        if (group == groups.size()) {
            groupOfName.insert(record.name, group);
            groups.push_back({record.name, {}});
        }
        groups[group].variants.push_back({record.id, record.format, record.isEnabled, record.version});
        currentIds.insert(record.id);
    }
    for (ConsolidatedPlugin& group : groups) {
        std::stable_sort(group.variants.begin(), group.variants.end(),
                         [](const FormatVariant& left, const FormatVariant& right) {
                             return plainLess(left.badgeLabel(), right.badgeLabel());
                         });
    }
    // On purpose: a rebuild switches every variant back on, even one that the user had switched off.
    bulkActiveVariants = std::move(currentIds);
    consolidatedBulkPlugins = std::move(groups);
}

void BulkSelection::updateCachedTransfer()
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

void BulkSelection::toggleBulkVariant(const QUuid& id)
{
    bulkActiveVariants.mutate([&id](QSet<QUuid>& active) {
        if (!active.remove(id))
            active.insert(id);
    });
}

std::vector<PluginFormat> BulkSelection::selectedFormatsInBulk() const
{
    QSet<PluginFormat> found;
    for (const ConsolidatedPlugin& group : *consolidatedBulkPlugins) {
        for (const FormatVariant& variant : group.variants)
            found.insert(variant.format);
    }
    std::vector<PluginFormat> formats(found.begin(), found.end());
    std::sort(formats.begin(), formats.end(), [](PluginFormat left, PluginFormat right) {
        return plainLess(rawValue(left), rawValue(right));
    });
    return formats;
}

QSet<QUuid> BulkSelection::bulkVariantIds(PluginFormat format) const
{
    QSet<QUuid> ids;
    for (const ConsolidatedPlugin& group : *consolidatedBulkPlugins) {
        for (const FormatVariant& variant : group.variants) {
            if (variant.format == format)
                ids.insert(variant.id);
        }
    }
    return ids;
}

bool BulkSelection::isFormatFullyActive(PluginFormat format) const
{
    const QSet<QUuid> ids = bulkVariantIds(format);
    return !ids.isEmpty() && bulkActiveVariants->contains(ids);
}

bool BulkSelection::isFormatPartiallyActive(PluginFormat format) const
{
    const QSet<QUuid> ids = bulkVariantIds(format);
    return bulkActiveVariants->intersects(ids) && !bulkActiveVariants->contains(ids);
}

void BulkSelection::toggleBulkFormat(PluginFormat format)
{
    const QSet<QUuid> ids = bulkVariantIds(format);
    const bool wasFullyActive = isFormatFullyActive(format);
    bulkActiveVariants.mutate([&](QSet<QUuid>& active) {
        if (wasFullyActive)
            active.subtract(ids);
        else
            active.unite(ids);
    });
}

AudioPlugins BulkSelection::selectedRecords() const
{
    return m_database.getPluginsByIds(persistedSelections);
}

AudioPlugins BulkSelection::bulkActionPlugins() const
{
    AudioPlugins records = selectedRecords();
    std::erase_if(records,
                  [this](const AudioPlugin& each) { return !bulkActiveVariants->contains(each.id); });
    sortByName(records);
    return records;
}

bool BulkSelection::selectionContainsWavesBundleToDisable() const
{
    const AudioPlugins records = bulkActionPlugins();
    return std::any_of(records.begin(), records.end(), [](const AudioPlugin& each) {
        return each.format == PluginFormat::wavesBundle && each.isEnabled;
    });
}

} // namespace orvanlite
