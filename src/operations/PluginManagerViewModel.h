#pragma once

#include "catalogue/PluginDatabase.h"
#include "discovery/PluginScanner.h"
#include "model/PluginError.h"
#include "operations/BulkSelection.h"
#include "operations/CatalogueRows.h"
#include "operations/PluginSort.h"
#include "operations/ProfilePreview.h"
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

/// The one object between the views and everything else: the state that the views show, and every operation on
/// plugin files. The views read its observable state and call its operations; assigning a filter or the sort reloads
/// the list by itself.
///
/// The selection and the profile preview are bases, so that a view that needs only one of them takes only that one.
/// Files are moved by PluginMover; here is the order of a change: files, rows, reload, log.
///
/// Sources: PluginManagerViewModel.cpp (state, scan, reload, paging), ...Changes.cpp (toggle, batch, deletion),
/// ...Profiles.cpp, ...Waves.cpp.
class PluginManagerViewModel final : public QObject,
                                     public CatalogueRows,
                                     public BulkSelection,
                                     public ProfilePreview {
    std::shared_ptr<PluginMover> m_mover; // before what refers to it

public:
    /// Loads the first page of the catalogue. No scan is started.
    PluginManagerViewModel(const platform::Platform& platform, PluginDatabase& database,
                           ActivityLogManager& activityLog, QObject* parent = nullptr);

    /// Where batches report their progress to; nowhere until this is called. It has to outlive every batch, also one
    /// that outlives this object.
    void setBatchProgress(BatchProgress* progress) { m_batchProgress = progress; }

    static constexpr int pageSize = 100;

    /// True from the start of a scan until its results are in the catalogue.
    Observable<bool> isLoading{false};
    /// The last failure of an operation. Only the start of a scan clears it.
    Observable<std::optional<PluginError>> error;
    /// Inverted by resetView(), so that views reset what is their own. The value means nothing.
    Observable<bool> resetViewTrigger{false};
    Observable<QString> manufacturerSearchText;
    Observable<QSet<PluginFormat>> selectedFormats; ///< empty: all
    Observable<QString> searchText;                 ///< reloads 50 ms after each change
    Observable<bool> showAllPlugins{false};
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
    /// What the last scan found that the catalogue did not know before.
    Observable<AudioPlugins> newlyDetectedPlugins;
    /// True while at least one privileged script runs, its password prompt included. The main window takes no input
    /// then.
    Observable<bool>& isRunningScript;

    [[nodiscard]] int currentOffset() const { return m_currentOffset; }
    [[nodiscard]] bool hasMorePages() const { return m_hasMorePages; }

    /// Scans the machine, replaces the catalogue and finds what is new. Nothing prevents a second scan meanwhile.
    QCoro::Task<> scanForPlugins();
    /// Loads the first page and all counts again, and publishes the number of enabled plugins for the helper agent.
    void refreshFromDatabase();
    /// After a change of files: reloads everything that shows plugins.
    void refreshAllState();
    /// Loads the next page, if there is one. Called when the last row comes into view.
    void loadMoreIfNeeded();
    void loadAllPages();
    void resetView();

    /// All filters at once: what the listings are narrowed to.
    [[nodiscard]] PluginFilter currentFilter() const;
    /// Everything that the filters match, in the order of the sort, up to 100,000 rows. A fresh query.
    [[nodiscard]] AudioPlugins allFilteredPlugins() const;
    /// Rows per format, whatever the filters are. Six queries.
    [[nodiscard]] std::vector<std::pair<PluginFormat, int>> pluginCounts() const;

    /// Selects everything outside the current filter, and nothing else: it inverts the filter, not the selection.
    void invertSelection();

    /// Moves one plugin to or from its folder of disabled plugins, by the state in the record. A failure goes to
    /// `error`.
    QCoro::Task<> togglePlugin(AudioPlugin plugin);
    /// Flips every plugin by its own state, with one script and one prompt, whatever their number. From 51 on the
    /// progress panel is shown. A failure goes to `error`.
    QCoro::Task<> toggleMultiplePlugins(AudioPlugins batch);
    /// Deletes the plugins' files for good, with one prompt, and then their rows. Asks for no confirmation. A failure
    /// goes to `error`.
    QCoro::Task<> deletePlugins(AudioPlugins pluginsToDelete);

    /// A click on a profile's row: previews it without filters, or ends its preview.
    void previewProfile(const PluginProfile& profile);
    void closeProfilePreview();
    /// Brings all plugins into the profile's state, with one prompt. Nothing to do ends in silence, a failure goes to
    /// `error`.
    QCoro::Task<> applyProfile(PluginProfile profile);
    /// Overwrites the profile with the present state, in the preview too.
    void updateProfile(ProfileManager& manager, PluginProfile profile);
    /// Deletes the profile, and ends its preview first.
    void deleteProfile(ProfileManager& manager, PluginProfile profile);
    /// Saves the state of all plugins. False, with nothing done, for a name of white space.
    bool saveProfile(ProfileManager& manager, const QString& enteredName) const;
    /// Saves a profile in which exactly the selection is enabled. False, with nothing done, for a name of white
    /// space.
    bool saveProfileFromSelection(ProfileManager& manager, const QString& enteredName) const;

    /// All Waves rows of a name, in the order of `plugins`.
    [[nodiscard]] AudioPlugins allWavesPluginsMatchingName(const QString& name) const;
    /// Registers the Waves Audio Units again after bundles have come back. Silent.
    void runWavesAURegUtilities();

private:
    [[nodiscard]] AudioPlugins queryPage(int limit, int offset) const;
    void publishEnabledCount();
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
