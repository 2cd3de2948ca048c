#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"
#include "model/PluginLocations.h"
#include "operations/ShellCommands.h"
#include "operations/WorkStatus.h"
#include "platform/ScriptRunner.h"

#include <qcorotask.h>

#include <memory>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class BatchProgress;

/// Moves and deletes plugin files and requests administrator rights where needed. Changes only files: the
/// caller updates the catalogue, the log and the views.
///
/// Errors: PluginError, or FileError when no administrator rights are used. A script that fails half-way is
///         not rolled back.
///
/// Owned by a shared pointer, which every running script shares.
class PluginMover final : public std::enable_shared_from_this<PluginMover> {
public:
    explicit PluginMover(const platform::Platform& platform);

    /// True while at least one privileged script runs, including its password prompt.
    Observable<bool> isRunningScript{false};
    /// What the running script does. Its end and its outcome are assigned by the caller.
    Observable<WorkStatus> workStatus;

    /// Enables or disables one plugin, depending on the record's state, and returns the changed record.
    QCoro::Task<AudioPlugin> toggle(AudioPlugin plugin);

    /// Toggles every plugin with one script and thus one prompt.
    /// Shape:   the changed records in list order; an empty list runs a script without moves.
    /// Units:   `progress` is updated every 80 ms.
    /// Errors:  permissionDenied when the script fails as a whole. Individual failed moves are not detected.
    /// Effects: temporary files, then moves. `progress` may be null, otherwise it must outlive the script.
    QCoro::Task<AudioPlugins> toggleAll(AudioPlugins plugins, BatchProgress* progress);

    /// Deletes the files permanently, with one prompt. A missing file is not an error; the first real one
    /// stops it.
    QCoro::Task<> remove(AudioPlugins plugins);

private:
    /// Target of a toggle: the original path, or an unused name in the folder of disabled plugins.
    [[nodiscard]] QString destination(const AudioPlugin& plugin) const;
    [[nodiscard]] QString freeName(const QString& folder, const QString& name) const;
    void performFileOperation(const QString& source, const QString& destination) const;
    QCoro::Task<> performWithAdminRights(AudioPlugin plugin, QString destination);
    QCoro::Task<platform::ScriptOutcome> run(QString source, WorkStatus work);
    /// The password has been accepted.
    void begin(const WorkStatus& work);
    QCoro::Task<> pollProgress(QString progressFile, qsizetype total, BatchProgress* progress,
                               std::shared_ptr<bool> isCancelled);

    const platform::Platform& m_platform;
    const PluginLocations m_locations;
    int m_runningScripts = 0;
};

} // namespace orvanlite
