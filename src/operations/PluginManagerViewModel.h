#pragma once

#include "catalogue/PluginDatabase.h"
#include "discovery/PluginScanner.h"
#include "model/PluginError.h"
#include "operations/BulkSelection.h"
#include "operations/CatalogueRows.h"
#include "operations/PluginSort.h"
#include "operations/ProfilePreview.h"
#include "operations/WorkStatus.h"
#include "records/FavoritesList.h"

#include <QObject>
#include <QSet>
#include <QStringList>

#include <qcorotask.h>

#include <memory>
#include <optional>
#include <utility>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class ActivityLogManager;
class BatchProgress;
class PluginMover;
class ProfileManager;

/// The object between the views and everything else: the state that views show, and every operation on plugin
/// files. Assigning a filter or the sort reloads the list.
///
/// The selection and the profile preview are base classes, so that a view can depend on only one of them.
/// PluginMover moves the files; this class defines the order of a change: files, rows, reload, log.
///
/// Sources: PluginManagerViewModel.cpp (state, scan, reload, paging), ...Changes.cpp (toggle, batch,
/// deletion), ...Profiles.cpp, ...Waves.cpp.
class PluginManagerViewModel final : public QObject,
                                     public CatalogueRows,
                                     public BulkSelection,
                                     public ProfilePreview {
    std::shared_ptr<PluginMover> m_mover; // first: members below are references into it

public:
    /// Loads the first page of the catalogue, without a scan.
    PluginManagerViewModel(const platform::Platform& platform, PluginDatabase& database,
                           ActivityLogManager& activityLog, QObject* parent = nullptr);

    /// Receiver of batch progress; none by default. It must outlive every batch, even one that outlives this
    /// object.
    void setBatchProgress(BatchProgress* progress) { m_batchProgress = progress; }

    static constexpr int pageSize = 100;

    /// True from the start of a scan until its results are in the catalogue.
    Observable<bool> isLoading{false};
    /// The last failure of an operation. Cleared only by the start of a scan.
    Observable<std::optional<PluginError>> error;
    /// Why the list disagrees with the plugin folders; empty as long as every change could be saved. Cleared
    /// by the next scan whose result could be saved.
    Observable<QString> unsavedReason;
    /// Toggled by resetView() so that views reset their own state. The value has no meaning.
    Observable<bool> resetViewTrigger{false};
    Observable<QString> manufacturerSearchText;
    Observable<QSet<PluginFormat>> selectedFormats; ///< empty: all
    Observable<QString> searchText;                 ///< reloads 50 ms after each change
    Observable<bool> showAllPlugins{false};
    /// The table's sort. Only the first entry counts.
    Observable<PluginSortOrder> sortOrder{PluginSortOrder{PluginComparator{}}};
    Observable<int> totalPluginCount{0}; ///< rows that match the filter
    Observable<int> dbTotalCount{0};
    Observable<int> dbEnabledCount{0};
    Observable<int> dbDisabledCount{0};
    Observable<QSet<QString>> selectedManufacturers; ///< empty: all
    Observable<QStringList> allManufacturers;
    /// Limits all listings to its keys. Not set anywhere yet.
    Observable<std::optional<FavoritesList>> activeFavoritesList;
    /// Plugins found by the last scan that were not in the catalogue before.
    Observable<AudioPlugins> newlyDetectedPlugins;
    /// True while at least one privileged script runs, including its password prompt. Blocks input to the
    /// main window.
    Observable<bool>& isRunningScript;
    /// The current operation, or why the last one failed. Cleared by the next operation, a scan and a reset.
    Observable<WorkStatus>& workStatus;

    [[nodiscard]] int currentOffset() const { return m_currentOffset; }
    [[nodiscard]] bool hasMorePages() const { return m_hasMorePages; }

    /// Scans the machine, replaces the catalogue and detects new plugins. Concurrent scans are not prevented.
    QCoro::Task<> scanForPlugins();
    /// Reloads the first page and all counts, and publishes the number of enabled plugins for the helper
    /// agent.
    void refreshFromDatabase();
    /// Reloads everything that shows plugins. Called after files have changed.
    void refreshAllState();
    /// Loads the next page, if any. Called when the last row becomes visible.
    void loadMoreIfNeeded();
    void loadAllPages();
    /// Loads whole pages with one query until `count` rows are loaded, or all.
    void loadRows(int count);
    void resetView();

    /// All filters at once: what the listings are narrowed to.
    [[nodiscard]] PluginFilter currentFilter() const;
    /// Queries all rows that match the filters, sorted, up to 100,000.
    [[nodiscard]] AudioPlugins allFilteredPlugins() const;
    /// Rows per format, ignoring the filters. Six queries.
    [[nodiscard]] std::vector<std::pair<PluginFormat, int>> pluginCounts() const;

    /// Selects exactly the rows outside the current filter: it inverts the filter, not the selection.
    void invertSelection();

    /// Moves one plugin to or from its folder of disabled plugins, depending on the record's state. A failure
    /// goes to `error`.
    QCoro::Task<> togglePlugin(AudioPlugin plugin);
    /// Toggles every plugin, depending on its record's state, with one script and one prompt. Shows the
    /// progress panel for 51 plugins or more. A failure goes to `error`.
    QCoro::Task<> toggleMultiplePlugins(AudioPlugins batch);
    /// Deletes the plugins' files permanently, with one prompt, then their rows. Does not ask for
    /// confirmation. A failure goes to `error`.
    QCoro::Task<> deletePlugins(AudioPlugins pluginsToDelete);

    /// Handles a click on a profile's row: previews it without filters, or ends its preview.
    void previewProfile(const PluginProfile& profile);
    void closeProfilePreview();
    /// Brings all plugins into the profile's state, with one prompt. Does nothing without changes. A failure
    /// goes to `error`.
    QCoro::Task<> applyProfile(PluginProfile profile);
    /// Overwrites the profile, also in the preview, with the current state.
    void updateProfile(ProfileManager& manager, PluginProfile profile);
    /// Ends the profile's preview, then deletes it.
    void deleteProfile(ProfileManager& manager, PluginProfile profile);
    /// Saves the state of all plugins. False, without effect, for an empty or whitespace-only name.
    bool saveProfile(ProfileManager& manager, const QString& enteredName) const;
    /// Saves a profile in which exactly the selection is enabled. False, without effect, for an empty or
    /// whitespace-only name.
    bool saveProfileFromSelection(ProfileManager& manager, const QString& enteredName) const;

    /// All Waves rows with this name, in the order of `plugins`.
    [[nodiscard]] AudioPlugins allWavesPluginsMatchingName(const QString& name) const;
    /// Re-registers the Waves Audio Units after bundles have been enabled. Failures are ignored.
    void runWavesAURegUtilities();

private:
    [[nodiscard]] AudioPlugins queryPage(int limit, int offset) const;
    /// Appends one query to the displayed rows.
    void appendRows(int limit, int offset);
    void publishEnabledCount();
    void reportUnsaved();
    void sortChanged();
    QCoro::Task<> reloadAfterTyping();
    void detectNewPlugins(const QSet<QString>& existingKeys);

    QCoro::Task<> toggleOne(AudioPlugin plugin);
    QCoro::Task<> toggleBatch(AudioPlugins batch);
    QCoro::Task<> deleteAll(AudioPlugins pluginsToDelete);
    void recordBatch(const AudioPlugins& batch, const AudioPlugins& updated);
    void logBatch(const AudioPlugins& plugins, bool wasEnabled);

    const platform::Platform& m_platform;
    PluginDatabase& m_database;
    ActivityLogManager& m_activityLog;
    PluginScanner m_scanner;
    BatchProgress* m_batchProgress = nullptr;
    int m_currentOffset = 0;
    bool m_hasMorePages = false;
};

} // namespace orvanlite
