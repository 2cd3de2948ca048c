#pragma once

#include "catalogue/PluginDatabase.h"
#include "discovery/PluginScanner.h"
#include "model/AudioPlugin.h"
#include "model/ConsolidatedPlugin.h"
#include "model/Observable.h"
#include "model/PluginError.h"
#include "model/PluginKeyTransfer.h"
#include "operations/BatchScript.h"
#include "operations/PluginSort.h"
#include "operations/ProfileComparison.h"
#include "platform/ScriptRunner.h"
#include "profiles/PluginProfile.h"
#include "records/FavoritesList.h"

#include <QObject>
#include <QSet>
#include <QStringList>

#include <qcorotask.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class ActivityLogManager;
class BatchProgress;
class ProfileManager;
struct ProfileChanges;

/// What happens to a plugin file.
enum class PluginOperation { enable = 0, disable = 1 };

/// The one object between the views and everything else: it owns the scanner and all state that the views show,
/// and every operation on plugin files goes through it. The views read its observable state and call its
/// operations; assigning a filter or the sort reloads the list by itself.
///
/// Sources: PluginManagerViewModel.cpp (state, scan, reload, paging), ...Selection.cpp, ...Bulk.cpp (the bulk pane's
/// content), ...Toggle.cpp (one plugin's file), ...Batch.cpp (many with one request for rights), ...Deletion.cpp,
/// ...Waves.cpp, ...Profiles.cpp (preview and application of profiles).
class PluginManagerViewModel final : public QObject {
public:
    /// Loads the first page of the catalogue. No scan is started.
    PluginManagerViewModel(const platform::Platform& platform, PluginDatabase& database,
                           ActivityLogManager& activityLog, QObject* parent = nullptr);

    /// Where long batches report to; nowhere until this is called. It has to outlive every batch, also one that goes
    /// on when this object has gone.
    void setBatchProgress(BatchProgress* progress) { m_batchProgress = progress; }

    static constexpr int pageSize = 100;

    /// The whole catalogue, unfiltered. Empty until a scan or refreshAllState() has run.
    Observable<AudioPlugins> plugins;
    /// True from the start of a scan until its results are in the catalogue.
    Observable<bool> isLoading{false};
    /// The last failure of an operation. Only the start of a scan clears it.
    Observable<std::optional<PluginError>> error;
    /// Inverted by resetView(), so that views reset what is their own. The value means nothing.
    Observable<bool> resetViewTrigger{false};
    Observable<QString> manufacturerSearchText;
    Observable<QSet<PluginFormat>> selectedFormats; ///< empty: all
    Observable<QString> searchText;                 ///< reloads 50 ms after each change
    /// The rows that the table marks: ids of loaded rows only.
    Observable<QSet<QUuid>> selectedPlugins;
    /// The profile under preview: a copy, to be replaced when the stored one changes.
    Observable<std::optional<PluginProfile>> activeProfile;
    Observable<bool> showAllPlugins{false};
    Observable<std::vector<ConsolidatedPlugin>> consolidatedBulkPlugins;
    Observable<QSet<QUuid>> bulkActiveVariants;
    /// What a preview shows: "changes", "enabled", "disabled"; anything else is all.
    Observable<QString> profileViewFilter{QStringLiteral("changes")};
    /// On purpose only counted: moves through 0, 1, 2 with every sort by status under a preview.
    Observable<int> profileSortMode{2};
    /// Plugins whose state differs from the profile under preview, in the order of `plugins`. Stays as it is when
    /// the preview ends.
    Observable<AudioPlugins> cachedProfileChanges;
    /// The true selection: all that the user has picked, across filters and pages.
    QSet<QUuid> persistedSelections;
    /// The table's sort. Only the first entry counts.
    Observable<PluginSortOrder> sortOrder{PluginSortOrder{PluginComparator{}}};
    Observable<int> totalPluginCount{0}; ///< rows that the filter matches
    Observable<int> dbTotalCount{0};
    Observable<int> dbEnabledCount{0};
    Observable<int> dbDisabledCount{0};
    Observable<QSet<QString>> selectedManufacturers; ///< empty: all
    Observable<QStringList> allManufacturers;
    /// Narrows all listings to its keys. Nothing sets it yet.
    Observable<std::optional<FavoritesList>> activeFavoritesList;
    /// The rows loaded so far for the filter and the sort.
    Observable<AudioPlugins> displayedPlugins;
    /// What the last scan found that the catalogue did not know before.
    Observable<AudioPlugins> newlyDetectedPlugins;
    /// Keys of the selection, kept ready for a drag.
    Observable<PluginKeyTransfer> cachedPluginKeysTransfer;
    /// True while a privileged script runs, its password prompt included. The main window takes no input then.
    Observable<bool> isRunningScript{false};

    [[nodiscard]] int currentOffset() const { return m_currentOffset; }
    [[nodiscard]] bool hasMorePages() const { return m_hasMorePages; }

    /// Scans the machine, replaces the catalogue and tells what is new. Nothing prevents a second scan meanwhile.
    QCoro::Task<> scanForPlugins();
    /// Loads the first page and all counts anew, and tells the helper agent the number of enabled plugins.
    void refreshFromDatabase();
    /// After a change of files: reloads everything that shows plugins.
    void refreshAllState();
    /// Loads the next page, if there is one. Called when the last row comes into view.
    void loadMoreIfNeeded();
    void loadAllPages();
    void resetView();
    /// Brings `cachedPluginKeysTransfer` in step with the selection.
    void updateCachedTransfer();

    /// What the tables show: `displayedPlugins`, and under a preview the slice that `profileViewFilter` names. Valid
    /// until the next change of either, of the profile or of `cachedProfileChanges`.
    [[nodiscard]] const AudioPlugins& filteredPlugins() const;
    /// Everything that the filters match, in the order of the sort, up to 100,000 rows. A fresh query.
    [[nodiscard]] AudioPlugins allFilteredPlugins() const;
    /// Rows per format, whatever the filters are. Six queries.
    [[nodiscard]] std::vector<std::pair<PluginFormat, int>> pluginCounts() const;

    void clearSelection();
    /// Selects everything outside the current filter, and nothing else: it inverts the filter, not the selection.
    void invertSelection();
    /// Takes every plugin out of the selection whose name holds "waveshell" in any case.
    void removeWavesPluginsFromSelection();
    /// Takes all formats of a name out of the selection.
    void deselectPluginsByName(const QString& name);
    /// The table's marks have grown by these: they join the selection. What is unmarked stays in it, so that it
    /// grows by clicks across searches.
    void collectSelection(const QSet<QUuid>& added);
    /// Whether the bulk pane would disable a Waves bundle.
    [[nodiscard]] bool selectionContainsWavesBundleToDisable() const;

    /// Folds the selection by name, with every variant switched on.
    void refreshBulkPane();
    void toggleBulkVariant(const QUuid& id);
    /// The formats in the bulk pane, in ascending order of their raw values.
    [[nodiscard]] std::vector<PluginFormat> selectedFormatsInBulk() const;
    /// All variants of the format are switched on; false when there are none.
    [[nodiscard]] bool isFormatFullyActive(PluginFormat format) const;
    /// Some variants of the format are switched on, but not all.
    [[nodiscard]] bool isFormatPartiallyActive(PluginFormat format) const;
    /// Switches all variants of the format off if all are on, otherwise all on.
    void toggleBulkFormat(PluginFormat format);
    /// What a bulk action acts on: the selected plugins whose variant is switched on, by name. A fresh query.
    [[nodiscard]] AudioPlugins bulkActionPlugins() const;

    /// Moves one plugin out of the hosts' sight or back, by the state in the record that is passed. A failure goes
    /// to `error`.
    QCoro::Task<> togglePlugin(AudioPlugin plugin);

    /// Flips every plugin by its own state, with one script and one request for rights, whatever their number. From
    /// 51 on the progress panel shows how far it has come. A failure goes to `error`.
    QCoro::Task<> toggleMultiplePlugins(AudioPlugins plugins);

    /// Removes the plugins' files for good, with one request for rights, and then their rows. Asks nothing itself.
    /// A failure goes to `error`.
    QCoro::Task<> deletePlugins(AudioPlugins plugins);

    /// A click on a profile's row: previews it without filters, or ends the preview when it is the one.
    void previewProfile(const PluginProfile& profile);
    void closeProfilePreview();
    /// Compares the profile under preview with `plugins` anew.
    void refreshProfileChanges();
    /// What applying the profile would move.
    [[nodiscard]] ProfileChanges profileChanges(const PluginProfile& profile) const;
    /// The number of these. Cheap enough for every row at every redraw.
    [[nodiscard]] int profileChangeCount(const PluginProfile& profile) const;
    /// Brings all plugins into the profile's state, with one request for rights. Nothing to do ends in silence, a
    /// failure goes to `error`.
    QCoro::Task<> applyProfile(PluginProfile profile);
    /// Overwrites the profile with the state as it is, also in the preview.
    void updateProfile(ProfileManager& manager, PluginProfile profile);
    /// Deletes the profile, and ends its preview first.
    void deleteProfile(ProfileManager& manager, PluginProfile profile);
    /// Saves the state of all plugins. False, with nothing done, for a name of blanks alone.
    bool saveProfile(ProfileManager& manager, const QString& enteredName) const;
    /// Saves a profile in which exactly the selection is on. False, with nothing done, for a name of blanks alone.
    bool saveProfileFromSelection(ProfileManager& manager, const QString& enteredName) const;

    /// All Waves rows of a name, in the order of `plugins`.
    [[nodiscard]] AudioPlugins allWavesPluginsMatchingName(const QString& name) const;

    /// Where a plugin of this format and place goes when it is disabled (a folder).
    [[nodiscard]] QString disabledFolder(const AudioPlugin& plugin) const;
    /// Starts the registration of the Waves Audio Units anew, after bundles have come back. Silent.
    void runWavesAURegUtilities();

private:
    [[nodiscard]] PluginFilter currentFilter() const;
    [[nodiscard]] AudioPlugins queryPage(int limit, int offset) const;
    void publishEnabledCount();
    void sortChanged();
    void connectProfileObservers();
    [[nodiscard]] AudioPlugins agreeingPlugins(bool enabled) const;
    QCoro::Task<> reloadAfterTyping();
    void detectNewPlugins(const QSet<QString>& existingKeys);

    QCoro::Task<AudioPlugin> performPluginOperation(AudioPlugin plugin, PluginOperation operation);
    [[nodiscard]] QString disabledDestination(const AudioPlugin& plugin) const;
    [[nodiscard]] std::vector<AudioPlugin> selectedRecords() const;
    void removeFromSelection(const std::function<bool(const AudioPlugin&)>& isMeant);
    [[nodiscard]] QSet<QUuid> bulkVariantIds(PluginFormat format) const;
    /// Runs a script while the windows take no input.
    QCoro::Task<platform::ScriptOutcome> runScript(QString source);
    QCoro::Task<AudioPlugins> performBatchOperations(std::vector<BatchItem> items);
    QCoro::Task<> pollProgress(QString progressFile, int total, std::shared_ptr<bool> isCancelled);
    /// What follows when the files have moved: rows, reload, log, Waves.
    void recordBatch(const AudioPlugins& batch, const AudioPlugins& updated);
    void logBatch(const AudioPlugins& plugins, bool wasEnabled);
    void performFileOperation(const QString& source, const QString& destination);
    QCoro::Task<> performWithAdminRights(QString source, QString destination, PluginOperation operation,
                                         bool clearAUCache);

    const platform::Platform& m_platform;
    PluginDatabase& m_database;
    ActivityLogManager& m_activityLog;
    PluginScanner m_scanner;
    BatchProgress* m_batchProgress = nullptr;
    int m_currentOffset = 0;
    bool m_hasMorePages = false;

    // Answers that are kept until what they were made from is assigned.
    mutable ProfileComparison m_comparison;
    mutable std::optional<AudioPlugins> m_agreeingPlugins;
};

} // namespace orvanlite
