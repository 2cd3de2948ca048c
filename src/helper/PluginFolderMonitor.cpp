#include "helper/PluginFolderMonitor.h"

#include "model/AudioPlugin.h"
#include "platform/FileManager.h"
#include "platform/Path.h"

#include <QFileInfo>

#include <chrono>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// An installer adds several plugins at once: they are reported together.
constexpr std::chrono::milliseconds kPause(1000);

} // namespace

PluginFolderMonitor::PluginFolderMonitor(const platform::FileManager& files,
                                         const platform::SystemLayout& layout, QObject* parent)
    : QObject(parent)
    , m_files(files)
    , m_locations(layout)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPause);
    // Counted from the first change, not the last: otherwise constant changes would block all reports.
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_pause.isActive())
            m_pause.start();
    });
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (const auto news = look(); !news.empty())
            Q_EMIT found(news);
    });
    look();
}

std::vector<FoundPlugin> PluginFolderMonitor::look()
{
    // From scratch: the watcher keeps watching a renamed folder under its old name. Each folder is watched
    // before it is listed, so that nothing is missed in between.
    if (const QStringList watched = m_watcher.directories(); !watched.isEmpty())
        m_watcher.removePaths(watched);
    std::vector<FoundPlugin> news;
    for (const PluginFormat format : allCases<PluginFormat>) {
        m_linkTargets.clear(); // one folder may be linked from the folders of several formats
        const QStringList folders = m_locations.searchFolders(format);
        for (const QString& folder : folders)
            lookIn(folder, format, news);
    }
    lookInWaves(news);
    return news;
}

void PluginFolderMonitor::lookIn(const QString& folder, PluginFormat format, std::vector<FoundPlugin>& news)
{
    if (!watch(folder))
        return;
    for (const platform::DirectoryEntry& entry : m_files.listOrNothing(folder)) {
        const QString path = platform::join(folder, entry.name);
        if (PluginLocations::isPluginOf(format, entry.name))
            lookAtEntry(entry.name, format, news);
        else if (entry.kind == platform::EntryKind::directory ||
                 (entry.kind == platform::EntryKind::unresolved && isFreshLink(path)))
            lookIn(path, format, news);
    }
}

void PluginFolderMonitor::lookInWaves(std::vector<FoundPlugin>& news)
{
    const QString& root = m_locations.wavesFolder();
    if (!watch(root))
        return;
    for (const platform::DirectoryEntry& entry : m_files.listOrNothing(root)) {
        if (entry.kind != platform::EntryKind::directory ||
            !PluginLocations::isWavesVersionFolder(entry.name))
            continue;
        const QString version = platform::join(root, entry.name);
        for (const QString& folder : {version, PluginLocations::wavesDisabledFolder(version)}) {
            if (!watch(folder))
                continue;
            for (const platform::DirectoryEntry& bundle : m_files.listOrNothing(folder)) {
                if (PluginLocations::isPluginOf(PluginFormat::wavesBundle, bundle.name))
                    lookAtEntry(bundle.name, PluginFormat::wavesBundle, news);
            }
        }
    }
}

void PluginFolderMonitor::lookAtEntry(const QString& fileName, PluginFormat format,
                                      std::vector<FoundPlugin>& news)
{
    const QString name = platform::baseName(fileName);
    const QString key = pluginKey(name, format);
    if (m_known.contains(key) || PluginLocations::isContainer(name))
        return;
    m_known.insert(key);
    news.push_back({name, format});
}

bool PluginFolderMonitor::watch(const QString& folder)
{
    QString existing = folder;
    while (!existing.isEmpty() && !m_files.exists(existing))
        existing = platform::parentFolder(existing);
    m_watcher.addPath(existing.isEmpty() ? u"/"_s : existing);
    return existing == folder;
}

bool PluginFolderMonitor::isFreshLink(const QString& path)
{
    const auto status = m_files.status(path);
    if (!status || !status->isDirectory)
        return false;
    const QString target = QFileInfo(path).canonicalFilePath();
    if (m_linkTargets.contains(target))
        return false; // already visited, e.g. a symlink cycle
    m_linkTargets.insert(target);
    return true;
}

} // namespace orvanlite
