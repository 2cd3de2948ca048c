#include "operations/BulkSelection.h"

#include "catalogue/PluginDatabase.h"
#include "model/TextOrder.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace orvanlite {

namespace {

/// Rows per query when looking for the first id that has a row.
constexpr qsizetype kProbedIds = 1'000;

/// One group per name, sorted by name; the variants are sorted by label.
std::vector<ConsolidatedPlugin> groupedByName(const AudioPlugins& records)
{
    std::vector<ConsolidatedPlugin> groups;
    QHash<QString, std::size_t> groupOfName;
    for (const AudioPlugin& record : records) {
        const auto known = groupOfName.constFind(record.name);
        const std::size_t group = known != groupOfName.constEnd() ? *known : groups.size();
        if (group == groups.size()) {
            groupOfName.insert(record.name, group);
            groups.push_back({record.name, {}});
        }
        groups[group].variants.push_back({record.id, record.format, record.isEnabled, record.version});
    }
    // Groups are far fewer than records. Sorting them afterwards is equivalent: the order is stable.
    localizedSort(groups, [](const ConsolidatedPlugin& group) -> const QString& { return group.name; });
    for (ConsolidatedPlugin& group : groups) {
        if (group.variants.size() < 2)
            continue;
        std::stable_sort(group.variants.begin(), group.variants.end(),
                         [](const FormatVariant& left, const FormatVariant& right) {
                             return plainLess(left.badgeLabel(), right.badgeLabel());
                         });
    }
    return groups;
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
    m_grouped = {};
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

bool BulkSelection::isGrouped() const
{
    return m_grouped.revision == m_database.revision() && m_grouped.selection == persistedSelections;
}

void BulkSelection::refreshBulkPane()
{
    std::vector<ConsolidatedPlugin> groups;
    const bool wasGrouped = isGrouped();
    if (!wasGrouped) {
        const AudioPlugins records = selectedRecords();
        m_grouped = {persistedSelections, m_database.revision(), {}};
        m_grouped.ids.reserve(static_cast<qsizetype>(records.size()));
        for (const AudioPlugin& record : records)
            m_grouped.ids.insert(record.id);
        groups = groupedByName(records);
    }
    // On purpose: a rebuild switches every variant back on, even one that the user had switched off.
    bulkActiveVariants = m_grouped.ids;
    consolidatedBulkPlugins.mutate([&](std::vector<ConsolidatedPlugin>& shown) {
        if (!wasGrouped)
            shown = std::move(groups);
    });
}

/// Avoids reading a deferred transfer of a large selection.
bool BulkSelection::hasTransferKeys() const
{
    if (!cachedPluginKeysTransfer.isDeferred())
        return !cachedPluginKeysTransfer->keys.isEmpty();
    QSet<QUuid> probe;
    for (auto id = m_transferIds.cbegin(); id != m_transferIds.cend();) {
        probe.insert(*id++);
        if (probe.size() < kProbedIds && id != m_transferIds.cend())
            continue;
        if (!m_database.getPluginsByIds(std::exchange(probe, {})).empty())
            return true;
    }
    return false;
}

void BulkSelection::updateCachedTransfer()
{
    if (persistedSelections.isEmpty()) {
        if (hasTransferKeys())
            cachedPluginKeysTransfer.clear();
        m_transferIds.clear();
        return;
    }
    m_transferIds = persistedSelections;
    cachedPluginKeysTransfer.defer([this] {
        PluginKeyTransfer transfer;
        for (const AudioPlugin& plugin : m_database.getPluginsByIds(m_transferIds))
            transfer.keys.append(pluginKey(plugin));
        return transfer;
    });
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
    localizedSort(records, [](const AudioPlugin& plugin) -> const QString& { return plugin.name; });
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
