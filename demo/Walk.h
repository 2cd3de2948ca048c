#pragma once

#include "demo/Stage.h"
#include "model/AudioPlugin.h"
#include "records/ActivityLogEntry.h"

#include <QString>

#include <functional>

namespace orvanlite {
class ActivityLogManager;
class PluginTableView;
class ProgressWindowManager;
class UADCleanupManager;
} // namespace orvanlite

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite::demo {

class DemoAppearance;

/// Walks through the main workflow in the real window, with mouse and keyboard like a user.
class Walk final : public Stage {
public:
    Walk(MainWindow& window, ProgressWindowManager& progress, const ActivityLogManager& activityLog,
         UADCleanupManager& uadCleanup, DemoAppearance& appearance, const platform::SystemLayout& layout,
         QString outputFolder);

    /// True when every step succeeded.
    bool run();

private:
    void firstScan();
    void search();
    void visitManufacturer();
    void sortByEachColumn();
    void page();
    void disableAndEnable(const QString& title, const std::function<bool(const AudioPlugin&)>& isWanted);
    void pickAcrossSearches();
    void bulk();
    void deleteThree();
    void wavesVersions();
    void cleanUpDemos();
    void profiles();
    void exportReports();
    [[nodiscard]] bool exportAs(const QString& format);
    /// Whether the newest `count` entries of the activity log have this action.
    [[nodiscard]] bool logSays(int count, ActivityAction action) const;
    void testScanAgrees();
    /// Log of the pages and folders that the sandbox's tools were asked to open.
    [[nodiscard]] QString openedLog() const;
    void looks();

    /// Selects every row that matches the text; returns the size of the whole selection.
    qsizetype pickAll(const QString& text);
    /// Clicks a button of the bulk pane, confirms if asked, and waits for the script to end.
    void act(const QString& button, const QString& midRunScreenshot = {});
    [[nodiscard]] int countOnDisk(const AudioPlugins& plugins, bool atOriginalPath) const;
    void clickSwitch(int row);

    ProgressWindowManager& m_progress;
    const ActivityLogManager& m_activityLog;
    UADCleanupManager& m_uadCleanup;
    DemoAppearance& m_appearance;
    const platform::SystemLayout& m_layout;
    PluginTableView& m_table;
};

} // namespace orvanlite::demo
