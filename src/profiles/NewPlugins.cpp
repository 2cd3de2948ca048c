#include "profiles/NewPlugins.h"

#include "profiles/ProfileManager.h"

#include <QHash>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kNamesInBanner = 3;

} // namespace

void NewPlugins::updateStates(const AudioPlugins& plugins)
{
    QHash<QUuid, const AudioPlugin*> byId;
    // Ids do not outlive a scan, and a key may have copies in several folders.
    QHash<std::pair<QString, QString>, const AudioPlugin*> byKeyAndPath;
    QHash<QString, const AudioPlugin*> byKey;
    for (const AudioPlugin& plugin : plugins) {
        const QString key = pluginKey(plugin);
        byId.insert(plugin.id, &plugin);
        byKeyAndPath.insert({key, plugin.originalPath}, &plugin);
        byKeyAndPath.insert({key, plugin.currentPath}, &plugin);
        byKey.insert(key, &plugin);
    }
    for (AudioPlugin& detected : detectedNewPlugins) {
        const QString key = pluginKey(detected);
        const AudioPlugin* now = byId.value(detected.id);
        for (const QString& path : {detected.currentPath, detected.originalPath})
            now = now ? now : byKeyAndPath.value({key, path});
        now = now ? now : byKey.value(key);
        if (!now)
            continue; // uninstalled: keep the last known state
        detected.currentPath = now->currentPath;
        detected.isEnabled = now->isEnabled;
    }
}

std::vector<PluginFormat> NewPlugins::detectedFormats() const
{
    std::vector<PluginFormat> formats;
    for (const PluginFormat format : allCases<PluginFormat>) {
        if (count(format) > 0)
            formats.push_back(format);
    }
    std::sort(formats.begin(), formats.end(),
              [](PluginFormat a, PluginFormat b) { return rawValue(a) < rawValue(b); });
    return formats;
}

qsizetype NewPlugins::count(PluginFormat format) const
{
    return std::count_if(detectedNewPlugins.begin(), detectedNewPlugins.end(),
                         [format](const AudioPlugin& plugin) { return plugin.format == format; });
}

AudioPlugins NewPlugins::selectedNewPlugins() const
{
    AudioPlugins selected;
    for (const AudioPlugin& plugin : detectedNewPlugins) {
        if (selectedNewPluginIds.contains(plugin.id))
            selected.push_back(plugin);
    }
    return selected;
}

void NewPlugins::toggleFormat(PluginFormat format)
{
    const bool goesOff = selectedNewPluginFormats.remove(format);
    if (!goesOff)
        selectedNewPluginFormats.insert(format);
    for (const AudioPlugin& plugin : detectedNewPlugins) {
        if (plugin.format != format)
            continue;
        if (goesOff)
            selectedNewPluginIds.remove(plugin.id);
        else
            selectedNewPluginIds.insert(plugin.id);
    }
}

void NewPlugins::togglePlugin(const AudioPlugin& plugin)
{
    const bool goesOff = selectedNewPluginIds.remove(plugin.id);
    if (!goesOff)
        selectedNewPluginIds.insert(plugin.id);
    // On purpose asymmetric: the chip goes off with the last selection, on only when all are selected.
    const bool hasLeft =
        std::any_of(detectedNewPlugins.begin(), detectedNewPlugins.end(), [&](const auto& each) {
            return each.format == plugin.format && selectedNewPluginIds.contains(each.id) == goesOff;
        });
    if (hasLeft)
        return;
    if (goesOff)
        selectedNewPluginFormats.remove(plugin.format);
    else
        selectedNewPluginFormats.insert(plugin.format);
}

void NewPlugins::toggleProfile(const QUuid& id)
{
    if (!selectedProfilesForNewPlugins.remove(id))
        selectedProfilesForNewPlugins.insert(id);
}

bool NewPlugins::hasAllProfiles(const ProfileManager& manager) const
{
    return selectedProfilesForNewPlugins.contains(manager.profileIds());
}

void NewPlugins::toggleAllProfiles(const ProfileManager& manager)
{
    selectedProfilesForNewPlugins = hasAllProfiles(manager) ? QSet<QUuid>() : manager.profileIds();
}

bool NewPlugins::canAdd() const
{
    return !selectedNewPluginIds.isEmpty() && !selectedProfilesForNewPlugins.isEmpty();
}

QString NewPlugins::bannerText() const
{
    const auto total = std::ssize(detectedNewPlugins);
    QStringList names;
    for (const AudioPlugin& plugin : detectedNewPlugins) {
        if (names.size() < kNamesInBanner)
            names.append(plugin.name);
    }
    // No arg(): a name may contain a placeholder.
    QString text = QString::number(total) + (total == 1 ? u" new plugin"_s : u" new plugins"_s);
    text += u" detected: "_s + names.join(u", "_s);
    if (total > kNamesInBanner)
        text += u" +%1 more"_s.arg(total - kNamesInBanner);
    return text;
}

QString NewPlugins::explanation() const
{
    const auto total = std::ssize(detectedNewPlugins);
    return u"These %1 plugin%2 just installed on your system. Select which ones to add to your profiles."_s
        .arg(QString::number(total), total == 1 ? u" was"_s : u"s were"_s);
}

QString NewPlugins::selectionText() const
{
    return u"%1 of %2 plugins selected"_s.arg(selectedNewPluginIds.size()).arg(detectedNewPlugins.size());
}

QString NewPlugins::addButtonText() const { return u"Add %1 to Profiles"_s.arg(selectedNewPluginIds.size()); }

QString NewPlugins::chipText(PluginFormat format) const
{
    return u"%1 (%2)"_s.arg(rawValue(format), QString::number(count(format)));
}

void NewPlugins::addToProfiles(ProfileManager& manager) const
{
    AudioPlugins enabled;
    AudioPlugins disabled;
    AudioPlugins unselected;
    for (const AudioPlugin& plugin : detectedNewPlugins) {
        if (!selectedNewPluginIds.contains(plugin.id))
            unselected.push_back(plugin);
        else
            (plugin.isEnabled ? enabled : disabled).push_back(plugin);
    }
    if (!enabled.empty())
        manager.addPluginsToProfiles(enabled, selectedProfilesForNewPlugins, true);
    if (!disabled.empty())
        manager.addPluginsToProfiles(disabled, selectedProfilesForNewPlugins, false);
    if (!unselected.empty())
        manager.dismissNewPlugins(unselected);
    manager.clearPendingNewPlugins();
}

void NewPlugins::dismiss(ProfileManager& manager) const
{
    manager.dismissNewPlugins(detectedNewPlugins);
    manager.clearPendingNewPlugins();
}

std::optional<NewPlugins> collectNewPlugins(ProfileManager& manager, const AudioPlugins& newlyDetectedPlugins,
                                            const AudioPlugins& plugins)
{
    if (manager.profiles->empty())
        return std::nullopt;
    if (!newlyDetectedPlugins.empty()) {
        AudioPlugins all = newlyDetectedPlugins;
        const AudioPlugins earlier = manager.pendingNewPluginsFrom(plugins);
        all.insert(all.end(), earlier.begin(), earlier.end());
        manager.setPendingNewPlugins(all);
    }
    NewPlugins found;
    found.detectedNewPlugins = manager.pendingNewPluginsFrom(plugins);
    if (found.detectedNewPlugins.empty())
        return std::nullopt;
    found.selectedProfilesForNewPlugins = manager.profileIds();
    for (const AudioPlugin& plugin : found.detectedNewPlugins) {
        found.selectedNewPluginIds.insert(plugin.id);
        found.selectedNewPluginFormats.insert(plugin.format);
    }
    return found;
}

} // namespace orvanlite
