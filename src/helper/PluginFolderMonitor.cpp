#include "helper/PluginFolderMonitor.h"

#include "model/AudioPlugin.h"
#include "model/EntryName.h"
#include "model/PluginFolders.h"
#include "platform/FileManager.h"
#include "platform/SystemLayout.h"

#include <QFileInfo>

#include <chrono>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// An installer brings several plugins in one go: they are told together.
constexpr std::chrono::milliseconds kPause(1000);

std::vector<platform::DirectoryEntry> listQuietly(const platform::FileManager& files, const QString& path)
{
    try {
        return files.list(path, platform::HiddenEntries::skip);
    } catch (const platform::FileError&) {
        return {}; // gone since, or not for this user
    }
}

} // namespace

PluginFolderMonitor::PluginFolderMonitor(const platform::FileManager& files,
                                         const platform::SystemLayout& layout, QObject* parent)
    : QObject(parent)
    , m_files(files)
    , m_layout(layout)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPause);
    // From the first change on and not from the last one: where something changes all the time, news still come.
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
    // All anew: the watcher goes on with a folder that was renamed, under its old name. Each folder is watched
    // before it is listed, so nothing is missed in between.
    if (const QStringList watched = m_watcher.directories(); !watched.isEmpty())
        m_watcher.removePaths(watched);
    m_linkTargets.clear();
    std::vector<FoundPlugin> news;
    for (const PluginFormat format : allCases<PluginFormat>) {
        const QStringList folders = pluginFolders(format, m_layout);
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
    for (const platform::DirectoryEntry& entry : listQuietly(m_files, folder)) {
        const QString path = folder + u'/' + entry.name;
        if (hasExtension(entry.name, bundleExtension(format)))
            lookAtEntry(entry.name, format, news);
        else if (entry.kind == platform::EntryKind::directory ||
                 (entry.kind == platform::EntryKind::unresolved && isFreshLink(path)))
            lookIn(path, format, news);
    }
}

void PluginFolderMonitor::lookInWaves(std::vector<FoundPlugin>& news)
{
    const QString root = m_layout.wavesDirectory();
    if (!watch(root))
        return;
    for (const platform::DirectoryEntry& entry : listQuietly(m_files, root)) {
        if (entry.kind != platform::EntryKind::directory || !isWavesVersionFolder(entry.name))
            continue;
        const QString version = root + u'/' + entry.name;
        for (const QString& folder : {version, version + u"/Disabled"_s}) {
            if (!watch(folder))
                continue;
            for (const platform::DirectoryEntry& bundle : listQuietly(m_files, folder)) {
                if (hasExtension(bundle.name, bundleExtension(PluginFormat::wavesBundle)))
                    lookAtEntry(bundle.name, PluginFormat::wavesBundle, news);
            }
        }
    }
}

void PluginFolderMonitor::lookAtEntry(const QString& fileName, PluginFormat format,
                                      std::vector<FoundPlugin>& news)
{
    const QString name = baseName(fileName);
    const QString key = pluginKey(name, format);
    if (m_known.contains(key) || isPluginContainer(name))
        return;
    m_known.insert(key);
    news.push_back({name, format});
}

bool PluginFolderMonitor::watch(const QString& folder)
{
    QString existing = folder;
    while (!existing.isEmpty() && !m_files.exists(existing))
        existing.truncate(existing.lastIndexOf(u'/'));
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
        return false; // links in a ring
    m_linkTargets.insert(target);
    return true;
}

} // namespace orvanlite
