#pragma once

#include "model/Observable.h"
#include "uad/UADPluginAuth.h"

#include <QObject>
#include <QPointer>

#include <qcorotask.h>

#include <optional>

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

class PluginDatabase;
class PluginManagerViewModel;

/// The clean-up of UAD demos: obtains the manufacturer's list of authorisations, shows which installed
/// plugins the user does not own, and disables the selected ones. Nothing is deleted.
///
/// Holds the state of the last run: startCleanup() resets it, closing the sheet does not. A run that has been
/// superseded by a newer one ends without changing that state.
class UADCleanupManager final : public QObject {
public:
    /// The instance of this process.
    static UADCleanupManager& shared(const platform::Platform& platform, PluginDatabase& database);

    UADCleanupManager(const platform::Platform& platform, PluginDatabase& database,
                      QObject* parent = nullptr);

    static constexpr QStringView profileFilename = u"UADSystemProfile.txt";

    Observable<bool> showCleanupSheet{false};
    Observable<bool> isLoading{false};
    Observable<bool> cleanupComplete{false};
    /// Everything not authorised, in profile order.
    Observable<UADPluginAuths> demoPlugins;
    Observable<UADPluginAuths> authorizedPlugins;
    /// An error, or why there is nothing to do.
    Observable<std::optional<QString>> errorMessage;
    /// Number of files, not of profile entries, including those that were already disabled.
    Observable<int> disabledCount{0};

    /// Scans and disables. Set by the root view before the start; once it is destroyed, the clean-up ends
    /// silently.
    QPointer<PluginManagerViewModel> pluginManager;

    /// Subsets of `demoPlugins`, in its order.
    [[nodiscard]] UADPluginAuths expiredPlugins() const;
    [[nodiscard]] UADPluginAuths activeDemoPlugins() const;
    [[nodiscard]] UADPluginAuths notStartedPlugins() const;
    [[nodiscard]] int alreadyDisabledCount() const;
    [[nodiscard]] int selectedCount() const;

    /// Shows the sheet, resets everything and starts a run: scan, export, matching.
    void startCleanup();
    /// Starts a run with an existing profile file, without the manufacturer's control panel and without a
    /// scan.
    void retryWithExistingProfile();

    /// Exports the profile with the manufacturer's control panel, then reads and matches it.
    QCoro::Task<> exportAndParseProfile();
    /// Fills both lists from a profile's text, and sets `errorMessage` when there is nothing to do.
    void parseAndCrossReference(const QString& text);
    /// Disables all files of the selected entries with one request for administrator rights. Sets
    /// `errorMessage` when no file was found, otherwise `cleanupComplete`, even when the batch fails: that
    /// error goes to `pluginManager`.
    QCoro::Task<> disableSelectedUADDemos();

    void toggleSelection(const QUuid& id);
    /// Leaves already disabled entries as they are.
    void selectAll();
    void deselectAll();
    void selectExpiredOnly();

private:
    QCoro::Task<> scanAndExport();
    QCoro::Task<std::optional<QString>> triggerProfileExport();
    void parseProfile(const QString& path);
    void parseExistingProfile();
    [[nodiscard]] std::optional<QString> findProfile() const;
    void removeStaleProfile() const;
    [[nodiscard]] UADPluginAuths demosOf(UADPluginAuth::UADAuthState state) const;

    const platform::Platform& m_platform;
    PluginDatabase& m_database;
    int m_run = 0; ///< number of the run that owns the state
};

} // namespace orvanlite
