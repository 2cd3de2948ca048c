#include "discovery/WavesScan.h"

#include "model/EntryName.h"
#include "model/PluginFolders.h"
#include "model/Uuid.h"
#include "platform/FileManager.h"
#include "platform/SystemLayout.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kVersionStart = 9; ///< behind "Plug-Ins "

struct VersionFolder {
    QString path;
    QString version; ///< "V" included
};

std::vector<platform::DirectoryEntry> listQuietly(const platform::FileManager& files, const QString& path)
{
    try {
        return files.list(path, platform::HiddenEntries::skip);
    } catch (const platform::FileError&) {
        return {}; // as good as an empty folder: most machines have none of this
    }
}

void appendBundles(const platform::FileManager& files, const VersionFolder& home, const QString& folder,
                   AudioPlugins& plugins)
{
    for (const platform::DirectoryEntry& entry : listQuietly(files, folder)) {
        if (!hasExtension(entry.name, bundleExtension(PluginFormat::wavesBundle)))
            continue;
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = baseName(entry.name);
        plugin.manufacturer = u"Waves Audio"_s;
        plugin.format = PluginFormat::wavesBundle;
        plugin.originalPath = home.path + u'/' + entry.name;
        plugin.currentPath = folder + u'/' + entry.name;
        plugin.isEnabled = folder == home.path;
        plugin.version = home.version;
        plugins.push_back(std::move(plugin));
    }
}

} // namespace

AudioPlugins scanWavesBundlePlugins(const platform::FileManager& files, const platform::SystemLayout& layout)
{
    AudioPlugins plugins;
    const QString root = layout.wavesDirectory();
    for (const platform::DirectoryEntry& entry : listQuietly(files, root)) {
        // The listing's own word decides: a link to a folder is none.
        if (!isWavesVersionFolder(entry.name) || entry.kind != platform::EntryKind::directory)
            continue;
        const QString path = root + u'/' + entry.name;
        const VersionFolder folder{path, entry.name.sliced(kVersionStart)};
        appendBundles(files, folder, path, plugins);
        appendBundles(files, folder, path + u"/Disabled"_s, plugins);
    }
    return plugins;
}

} // namespace orvanlite
