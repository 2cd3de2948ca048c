#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"
#include "model/PluginLocations.h"
#include "operations/ShellCommands.h"
#include "platform/ScriptRunner.h"

#include <qcorotask.h>

#include <memory>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class BatchProgress;

/// Moves and deletes the files of plugins and asks for administrator rights where they are needed. Changes files and
/// nothing else: the rows of the catalogue, the log and the views are its caller's.
///
/// Errors: PluginError, or FileError from the route without rights. There is no rollback of a script that failed
///         half-way.
///
/// Held in a shared pointer: a running script keeps it alive, whoever else has gone.
class PluginMover final : public std::enable_shared_from_this<PluginMover> {
public:
    explicit PluginMover(const platform::Platform& platform);

    /// True while at least one privileged script runs, its password prompt included.
    Observable<bool> isRunningScript{false};

    /// Moves one plugin to its other side, by the state in the record, and returns the changed record.
    QCoro::Task<AudioPlugin> toggle(AudioPlugin plugin);

    /// Moves every plugin to its other side with one script, and so one prompt, whatever their number.
    /// Shape:   the changed records in the order of the list; an empty list runs a script without moves.
    /// Errors:  permissionDenied when the script failed as a whole. Single failed moves are not detected.
    /// Effects: `progress`, unless null, hears of the share done every 80 ms. It has to outlive the script.
    QCoro::Task<AudioPlugins> toggleAll(AudioPlugins plugins, BatchProgress* progress);

    /// Deletes the files for good, with one prompt. A missing file is no failure; the first real one ends it.
    QCoro::Task<> remove(AudioPlugins plugins);

private:
    /// Where toggling moves the plugin: its original path, or a free name in its folder of disabled plugins.
    [[nodiscard]] QString destination(const AudioPlugin& plugin) const;
    [[nodiscard]] QString freeName(const QString& folder, const QString& name) const;
    void performFileOperation(const QString& source, const QString& destination) const;
    QCoro::Task<> performWithAdminRights(AudioPlugin plugin, QString destination);
    QCoro::Task<platform::ScriptOutcome> run(QString source);
    QCoro::Task<> pollProgress(QString progressFile, qsizetype total, BatchProgress* progress,
                               std::shared_ptr<bool> isCancelled);

    const platform::Platform& m_platform;
    const PluginLocations m_locations;
    int m_runningScripts = 0;
};

} // namespace orvanlite
