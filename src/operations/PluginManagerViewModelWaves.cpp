#include "operations/PluginManagerViewModel.h"

#include "model/PluginLocations.h"
#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/Platform.h"
#include "platform/ProcessLauncher.h"

#include <algorithm>
#include <iterator>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

using platform::DirectoryEntry;

bool isRegistrationUtility(const DirectoryEntry& entry)
{
    return entry.name.startsWith(u"Waves AU Reg Utility"_s) && entry.name.endsWith(u".app"_s);
}

} // namespace

AudioPlugins PluginManagerViewModel::allWavesPluginsMatchingName(const QString& name) const
{
    AudioPlugins matches;
    std::copy_if(plugins->begin(), plugins->end(), std::back_inserter(matches),
                 [&name](const AudioPlugin& each) {
                     return each.format == PluginFormat::wavesBundle && each.name == name;
                 });
    return matches;
}

void PluginManagerViewModel::runWavesAURegUtilities()
{
    const QString waves = m_platform.layout.wavesDirectory();
    for (const DirectoryEntry& shells : m_platform.files.listOrNothing(waves)) {
        if (!PluginLocations::isWavesShellsFolder(shells.name))
            continue;
        const QString folder = platform::join(waves, shells.name);
        const std::vector<DirectoryEntry> entries = m_platform.files.listOrNothing(folder);
        const auto utility = std::find_if(entries.begin(), entries.end(), isRegistrationUtility);
        if (utility == entries.end())
            continue;
        try {
            m_platform.processes.start(
                m_platform.layout.openTool(),
                {u"-a"_s, platform::join(folder, utility->name), u"--args"_s, u"--silent"_s});
        } catch (const platform::FileError&) {
            // The plugin is enabled anyway; hosts find it after the next registration.
        }
    }
}

} // namespace orvanlite
