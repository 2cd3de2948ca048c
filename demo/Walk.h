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

/// Does the main job with the real window, as a user would, by mouse and keyboard.
class Walk final : public Stage {
public:
    Walk(MainWindow& window, ProgressWindowManager& progress, const ActivityLogManager& activityLog,
         UADCleanupManager& uadCleanup, DemoAppearance& appearance, const platform::SystemLayout& layout,
         QString outputFolder);

    /// True when every step came out right.
    bool run();

private:
    void firstScan();
    void search();
    void visitMaker();
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
    /// Whether the newest entries of the activity log, as many as these, are of this action.
    [[nodiscard]] bool logSays(int count, ActivityAction action) const;
    void testScanAgrees();
    /// What the sandbox's tools note when they are asked to open a page or a folder.
    [[nodiscard]] QString openedLog() const;
    void looks();

    /// Selects every row that the text finds; gives the size of the whole selection then.
    qsizetype pickAll(const QString& text);
    /// Presses a button of the bulk pane, confirms where it is asked, and waits for the script's end.
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
