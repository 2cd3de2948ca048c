#include "discovery/PluginScanner.h"

#include "discovery/BundleMetadata.h"
#include "discovery/Manufacturers.h"
#include "discovery/WavesScan.h"
#include "model/Console.h"
#include "model/TextOrder.h"
#include "model/Uuid.h"
#include "platform/FileManager.h"
#include "platform/Path.h"
#include "platform/Platform.h"

#include <QtConcurrentMap>

#include <algorithm>
#include <iterator>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

void append(AudioPlugins& plugins, AudioPlugins more)
{
    std::move(more.begin(), more.end(), std::back_inserter(plugins));
}

/// Fills in what the bundle's own files tell. Depends on the path alone, so it may run on any thread.
void readBundle(const platform::FileManager& files, AudioPlugin& plugin)
{
    const BundleMetadata metadata(files, plugin.currentPath);
    plugin.manufacturer = metadata.extractManufacturer();
    plugin.version = metadata.extractInfoFromBundle(BundleMetadata::InfoKey::version);
    plugin.bundleIdentifier = metadata.extractInfoFromBundle(BundleMetadata::InfoKey::identifier);
    plugin.lastUsed = metadata.extractLastUsed(plugin.name);
}

/// Stable: plugins with the same name stay in scan order.
AudioPlugins sortedByName(AudioPlugins plugins)
{
    struct Entry {
        QStringView name;
        std::size_t index;
    };
    // Entries are sorted instead of the much larger records.
    std::vector<Entry> entries;
    entries.reserve(plugins.size());
    for (const AudioPlugin& plugin : plugins)
        entries.push_back(
            {plugin.name.isEmpty() ? u"Unknown Plugin" : QStringView(plugin.name), entries.size()});
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& left, const Entry& right) { return plainLess(left.name, right.name); });
    AudioPlugins sorted;
    sorted.reserve(plugins.size());
    for (const Entry& entry : entries)
        sorted.push_back(std::move(plugins[entry.index]));
    return sorted;
}

} // namespace

PluginScanner::PluginScanner(const platform::Platform& platform)
    : m_locations(platform.layout)
    , m_files(platform.files)
{
    createCentralDisabledDirectoryIfNeeded();
}

QCoro::Task<> PluginScanner::scanAllPlugins()
{
    isScanning = true;
    scanProgress = 0;
    discoveredPlugins = AudioPlugins();
    createCentralDisabledDirectoryIfNeeded(); // it may have been removed or made visible
    scanError.clear();

    AudioPlugins plugins;
    double done = 0;
    for (const PluginFormat format : allCases<PluginFormat>) {
        append(plugins, scanPluginsForFormat(format));
        scanProgress = ++done / static_cast<double>(allCases<PluginFormat>.size());
    }
    discoveredPlugins = sortedByName(crossReferenceManufacturers(std::move(plugins)));
    isScanning = false;
    scanProgress = 1;
    co_return;
}

void PluginScanner::createCentralDisabledDirectoryIfNeeded()
{
    const QString& central = m_locations.centralDisabledDirectory();
    const bool existed = m_files.exists(central);
    try {
        if (!existed)
            m_files.createDirectory(central, platform::FolderAccess::everybody);
        m_files.setHidden(central);
    } catch (const platform::FileError& error) {
        printLine((existed ? u"Error setting hidden attribute: "_s
                           : u"Error creating central disabled directory: "_s) +
                  error.message);
    }
    for (const PluginFormat format : allCases<PluginFormat>) {
        const QString folder = m_locations.centralDisabledDirectory(format);
        try {
            if (!m_files.exists(folder))
                m_files.createDirectory(folder, platform::FolderAccess::everybody);
        } catch (const platform::FileError&) {
            // Without write access to the system library the folder stays missing, and the scan finds
            // nothing.
        }
    }
}

AudioPlugins PluginScanner::scanPluginsForFormat(PluginFormat format) const
{
    if (format == PluginFormat::wavesBundle)
        return scanWavesBundlePlugins(m_files, m_locations);
    AudioPlugins plugins;
    const QStringList folders = m_locations.searchFolders(format);
    for (const QString& folder : folders)
        scanDirectory(folder, format, plugins);
    // Returns when all are read. Each thread works on records of its own, so order and result stay the same.
    QtConcurrent::blockingMap(plugins,
                              [&files = m_files](AudioPlugin& plugin) { readBundle(files, plugin); });
    return plugins;
}

void PluginScanner::scanDirectory(const QString& path, PluginFormat format, AudioPlugins& plugins) const
{
    if (m_files.exists(path))
        recursivelyScanDirectory(path, format, plugins);
}

void PluginScanner::recursivelyScanDirectory(const QString& path, PluginFormat format,
                                             AudioPlugins& plugins) const
{
    // On purpose: no guard against symlink cycles. The system's limits on path length and links per path
    // bound the depth: a folder that links to itself is walked a few dozen times. Several such links in one
    // folder multiply, and their scan would practically never end, but plugin folders have none.
    std::vector<platform::DirectoryEntry> entries;
    try {
        entries = m_files.list(path, platform::HiddenEntries::skip);
    } catch (const platform::FileError& error) {
        printLine(u"❌ Error scanning directory "_s + path + u": "_s + error.message);
        return;
    }
    for (const platform::DirectoryEntry& entry : entries) {
        const QString entryPath = platform::join(path, entry.name);
        bool isDirectory = entry.kind == platform::EntryKind::directory;
        if (entry.kind == platform::EntryKind::unresolved) {
            const auto status = m_files.status(entryPath);
            if (!status)
                continue; // dangling link
            isDirectory = status->isDirectory;
        }
        if (PluginLocations::isPluginOf(format, entry.name)) {
            if (auto plugin = createPluginFromURL(entryPath, entry.name, format))
                plugins.push_back(std::move(*plugin));
        } else if (isDirectory) {
            recursivelyScanDirectory(entryPath, format, plugins);
        }
    }
}

std::optional<AudioPlugin> PluginScanner::createPluginFromURL(const QString& path, const QString& fileName,
                                                              PluginFormat format) const
{
    AudioPlugin plugin;
    plugin.name = platform::baseName(fileName);
    if (PluginLocations::isContainer(plugin.name))
        return std::nullopt;
    plugin.id = makeUuid();
    plugin.format = format;
    plugin.isEnabled = !m_locations.isDisabled(path);
    plugin.originalPath = m_locations.originalPath(path, format);
    plugin.currentPath = path;
    return plugin;
}

} // namespace orvanlite
