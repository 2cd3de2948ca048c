#pragma once

#include "model/PluginLocations.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <vector>

namespace orvanlite::platform {
class FileManager;
struct SystemLayout;
} // namespace orvanlite::platform

namespace orvanlite {

struct FoundPlugin {
    QString name;
    PluginFormat format;
    bool operator==(const FoundPlugin&) const = default;
};

/// Watches the folders of all formats, for enabled and disabled plugins, without looking into plugins.
/// Folders created later are watched too.
///
/// A plugin is identified by name and format and stays known: one that is toggled, or removed and
/// reinstalled, is not reported.
class PluginFolderMonitor final : public QObject {
    Q_OBJECT

public:
    /// Plugins that exist now count as known.
    PluginFolderMonitor(const platform::FileManager& files, const platform::SystemLayout& layout,
                        QObject* parent = nullptr);

Q_SIGNALS:
    /// New plugins, in the order of formats.
    void found(const std::vector<orvanlite::FoundPlugin>& plugins);

private:
    /// New plugins since the last call.
    std::vector<FoundPlugin> look();
    void lookIn(const QString& folder, PluginFormat format, std::vector<FoundPlugin>& news);
    void lookInWaves(std::vector<FoundPlugin>& news);
    void lookAtEntry(const QString& fileName, PluginFormat format, std::vector<FoundPlugin>& news);
    /// Watches the folder or its nearest existing ancestor. False if the folder does not exist.
    bool watch(const QString& folder);
    /// Whether a link points to a folder that was not reached through a link yet in this look.
    bool isFreshLink(const QString& path);

    const platform::FileManager& m_files;
    const PluginLocations m_locations;
    QFileSystemWatcher m_watcher;
    QTimer m_pause;
    QSet<QString> m_known;       ///< plugin keys
    QSet<QString> m_linkTargets; ///< of the current look at a format
};

} // namespace orvanlite
