#include "discovery/WavesScan.h"

#include "model/PluginLocations.h"
#include "model/Uuid.h"
#include "platform/FileManager.h"
#include "platform/Path.h"

namespace orvanlite {

using namespace Qt::StringLiterals;
using platform::join;

namespace {

struct VersionFolder {
    QString path;
    QString version;
};

void appendBundles(const platform::FileManager& files, const VersionFolder& home, const QString& folder,
                   AudioPlugins& plugins)
{
    for (const platform::DirectoryEntry& entry : files.listOrNothing(folder)) {
        if (!PluginLocations::isPluginOf(PluginFormat::wavesBundle, entry.name))
            continue;
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = platform::baseName(entry.name);
        plugin.manufacturer = u"Waves Audio"_s;
        plugin.format = PluginFormat::wavesBundle;
        plugin.originalPath = join(home.path, entry.name);
        plugin.currentPath = join(folder, entry.name);
        plugin.isEnabled = folder == home.path;
        plugin.version = home.version;
        plugins.push_back(std::move(plugin));
    }
}

} // namespace

AudioPlugins scanWavesBundlePlugins(const platform::FileManager& files, const PluginLocations& locations)
{
    AudioPlugins plugins;
    for (const platform::DirectoryEntry& entry : files.listOrNothing(locations.wavesFolder())) {
        // On purpose: links to folders are not followed.
        if (!PluginLocations::isWavesVersionFolder(entry.name) ||
            entry.kind != platform::EntryKind::directory)
            continue;
        const VersionFolder folder{join(locations.wavesFolder(), entry.name),
                                   PluginLocations::wavesVersion(entry.name)};
        appendBundles(files, folder, folder.path, plugins);
        appendBundles(files, folder, PluginLocations::wavesDisabledFolder(folder.path), plugins);
    }
    return plugins;
}

} // namespace orvanlite
