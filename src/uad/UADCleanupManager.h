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

/// The clean-up of UAD demos: gets the vendor's list of authorisations, shows which installed plugins the user does
/// not own, and disables the chosen ones. Nothing is deleted.
///
/// It holds the state of the last run: startCleanup() resets it, closing the sheet does not. A run that a newer one
/// has overtaken ends without touching that state.
class UADCleanupManager final : public QObject {
public:
    /// The one clean-up of the process.
    static UADCleanupManager& shared(const platform::Platform& platform, PluginDatabase& database);

    UADCleanupManager(const platform::Platform& platform, PluginDatabase& database,
                      QObject* parent = nullptr);

    static constexpr QStringView profileFilename = u"UADSystemProfile.txt";

    Observable<bool> showCleanupSheet{false};
    Observable<bool> isLoading{false};
    Observable<bool> cleanupComplete{false};
    /// All that is not authorised, in the order of the profile.
    Observable<UADPluginAuths> demoPlugins;
    Observable<UADPluginAuths> authorizedPlugins;
    /// What went wrong, or why there is nothing to do.
    Observable<std::optional<QString>> errorMessage;
    /// Files, not profile entries, and with those that were off before.
    Observable<int> disabledCount{0};

    /// Scans and disables. Set by the root view before the start; the clean-up ends quietly when it has died.
    QPointer<PluginManagerViewModel> pluginManager;

    /// Of `demoPlugins`, in its order.
    [[nodiscard]] UADPluginAuths expiredPlugins() const;
    [[nodiscard]] UADPluginAuths activeDemoPlugins() const;
    [[nodiscard]] UADPluginAuths notStartedPlugins() const;
    [[nodiscard]] int alreadyDisabledCount() const;
    [[nodiscard]] int selectedCount() const;

    /// Shows the sheet, resets everything and starts a run: scan, export, matching.
    void startCleanup();
    /// Starts a run on a profile file that is there already, without the vendor's control panel and without a scan.
    void retryWithExistingProfile();

    /// Lets the vendor's control panel write the profile, reads it and matches it.
    QCoro::Task<> exportAndParseProfile();
    /// Fills both lists from the text of a profile, and `errorMessage` when nothing is left to do.
    void parseAndCrossReference(const QString& text);
    /// Disables all files of the ticked entries, with one request for administrator rights. Ends with
    /// `cleanupComplete`, or with a message when no file was found; a failed batch goes to the error of
    /// `pluginManager` and changes neither.
    QCoro::Task<> disableSelectedUADDemos();

    void toggleSelection(const QUuid& id);
    /// Leaves the entries that are off already as they are.
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
