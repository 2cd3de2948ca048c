#include "operations/PluginManagerViewModel.h"

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

void PluginManagerViewModel::refreshBulkPane()
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
    // On purpose: a rebuild switches every variant on again, also one that the user had switched off.
    bulkActiveVariants = std::move(currentIds);
    consolidatedBulkPlugins = std::move(groups);
}

void PluginManagerViewModel::toggleBulkVariant(const QUuid& id)
{
    bulkActiveVariants.mutate([&id](QSet<QUuid>& active) {
        if (!active.remove(id))
            active.insert(id);
    });
}

std::vector<PluginFormat> PluginManagerViewModel::selectedFormatsInBulk() const
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

QSet<QUuid> PluginManagerViewModel::bulkVariantIds(PluginFormat format) const
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

bool PluginManagerViewModel::isFormatFullyActive(PluginFormat format) const
{
    const QSet<QUuid> ids = bulkVariantIds(format);
    return !ids.isEmpty() && bulkActiveVariants->contains(ids);
}

bool PluginManagerViewModel::isFormatPartiallyActive(PluginFormat format) const
{
    const QSet<QUuid> ids = bulkVariantIds(format);
    return bulkActiveVariants->intersects(ids) && !bulkActiveVariants->contains(ids);
}

void PluginManagerViewModel::toggleBulkFormat(PluginFormat format)
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

AudioPlugins PluginManagerViewModel::bulkActionPlugins() const
{
    AudioPlugins records = selectedRecords();
    std::erase_if(records,
                  [this](const AudioPlugin& each) { return !bulkActiveVariants->contains(each.id); });
    sortByName(records);
    return records;
}

} // namespace orvanlite
