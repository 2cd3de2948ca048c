#pragma once

#include "model/AudioPlugin.h"
#include "records/ActivityLogEntry.h"

#include <QString>

#include <functional>

class QModelIndex;
class QWidget;

namespace orvanlite {
class ActivityLogManager;
class MainWindow;
class PluginManagerViewModel;
class PluginTableView;
class ProgressWindowManager;
} // namespace orvanlite

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite::demo {

class DemoAppearance;

/// Does the main job with the real window, as a user would, by mouse and keyboard: prints each step with its result
/// and leaves screenshots.
class Walk final {
public:
    Walk(MainWindow& window, ProgressWindowManager& progress, const ActivityLogManager& activityLog,
         DemoAppearance& appearance, const platform::SystemLayout& layout, QString outputFolder);

    /// True when every step came out right.
    bool run();

private:
    void firstScan();
    void search();
    void sortByEachColumn();
    void page();
    void disableAndEnable(const QString& title, const std::function<bool(const AudioPlugin&)>& isWanted);
    void pickAcrossSearches();
    void bulk();
    void deleteThree();
    void wavesVersions();
    /// Whether the newest entries of the activity log, as many as these, are of this action.
    [[nodiscard]] bool logSays(int count, ActivityAction action) const;
    void testScanAgrees();
    void looks();

    /// Selects every row that the text finds; gives the size of the whole selection then.
    qsizetype pickAll(const QString& text);
    /// Presses a button of the bulk pane, confirms where it is asked, and waits for the script's end.
    void act(const QString& button, const QString& midRunScreenshot = {});
    [[nodiscard]] int countOnDisk(const AudioPlugins& plugins, bool atOriginalPath) const;
    void step(const QString& title, bool succeeded, const QString& detail = {});
    enum class Area {
        window, ///< the main window alone, when it has come to rest
        screen, ///< what the screen shows in its place at once, other windows included
    };
    void screenshot(const QString& name, Area area = Area::window);
    void typeSearch(const QString& text);
    void clickSwitch(int row);
    /// Turns the event loop until the condition holds, ten seconds at most.
    bool waitFor(const std::function<bool()>& condition);
    template <typename Widget>
    Widget& named(const QString& objectName);

    MainWindow& m_window;
    ProgressWindowManager& m_progress;
    const ActivityLogManager& m_activityLog;
    DemoAppearance& m_appearance;
    const platform::SystemLayout& m_layout;
    QString m_outputFolder;
    PluginManagerViewModel& m_viewModel;
    PluginTableView& m_table;
    bool m_allSucceeded = true;
};

} // namespace orvanlite::demo
