#pragma once

#include "model/AudioPlugin.h"

#include <QString>

#include <functional>

class QModelIndex;
class QWidget;

namespace orvanlite {
class MainWindow;
class PluginManagerViewModel;
class PluginTableView;
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
    Walk(MainWindow& window, DemoAppearance& appearance, const platform::SystemLayout& layout,
         QString outputFolder);

    /// True when every step came out right.
    bool run();

private:
    void firstScan();
    void search();
    void sortByEachColumn();
    void page();
    void disableAndEnable(const QString& title, const std::function<bool(const AudioPlugin&)>& isWanted);
    void looks();

    void step(const QString& title, bool succeeded, const QString& detail = {});
    void screenshot(const QString& name);
    void typeSearch(const QString& text);
    void clickSwitch(int row);
    /// Turns the event loop until the condition holds, ten seconds at most.
    bool waitFor(const std::function<bool()>& condition);
    template <typename Widget>
    Widget& named(const QString& objectName);

    MainWindow& m_window;
    DemoAppearance& m_appearance;
    const platform::SystemLayout& m_layout;
    QString m_outputFolder;
    PluginManagerViewModel& m_viewModel;
    PluginTableView& m_table;
    bool m_allSucceeded = true;
};

} // namespace orvanlite::demo
