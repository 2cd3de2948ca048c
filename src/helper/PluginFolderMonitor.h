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

/// Watches the folders of all formats, enabled and disabled plugins alike, without ever looking into a plugin. Folders
/// that come later are watched from then on.
///
/// A plugin is known by its name and format, and stays so: one that is switched on or off, or that its installer
/// takes away and puts back, is no news.
class PluginFolderMonitor final : public QObject {
    Q_OBJECT

public:
    /// What is there now is known.
    PluginFolderMonitor(const platform::FileManager& files, const platform::SystemLayout& layout,
                        QObject* parent = nullptr);

Q_SIGNALS:
    /// Plugins that were not there before, in the order of formats.
    void found(const std::vector<orvanlite::FoundPlugin>& plugins);

private:
    /// What is new since the last look.
    std::vector<FoundPlugin> look();
    void lookIn(const QString& folder, PluginFormat format, std::vector<FoundPlugin>& news);
    void lookInWaves(std::vector<FoundPlugin>& news);
    void lookAtEntry(const QString& fileName, PluginFormat format, std::vector<FoundPlugin>& news);
    /// Watches the folder, or the nearest one above it that exists. False if it does not exist itself.
    bool watch(const QString& folder);
    /// Whether a link leads to a folder that this look has not taken a link to yet.
    bool isFreshLink(const QString& path);

    const platform::FileManager& m_files;
    const PluginLocations m_locations;
    QFileSystemWatcher m_watcher;
    QTimer m_pause;
    QSet<QString> m_known;       ///< plugin keys
    QSet<QString> m_linkTargets; ///< of the current look at a format
};

} // namespace orvanlite
