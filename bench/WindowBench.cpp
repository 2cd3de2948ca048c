// The time that the window adds to the catalogue's with 100,000 plugins: for a typed letter, a filter, "Load
// All" and scrolling through the rows, and the cost of the animated title while idle.

#include "catalogue/PluginDatabase.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/FullDiskAccess.h"
#include "platform/Platform.h"
#include "records/ActivityLogManager.h"
#include "shell/app/AppDelegate.h"
#include "shell/app/ContentView.h"
#include "shell/app/MainWindow.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/table/PluginTableView.h"
#include "shell/updates/UpdateChecker.h"
#include "uad/UADCleanupManager.h"

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using namespace orvanlite;

namespace {

constexpr int kPlugins = 100'000;
constexpr int kMakers = 3'000;
constexpr int kRepeats = 9;

AudioPlugins makePlugins()
{
    AudioPlugins plugins;
    plugins.reserve(kPlugins);
    for (int i = 0; i < kPlugins; ++i) {
        AudioPlugin plugin;
        plugin.id = QUuid::createUuid();
        plugin.format = allCases<PluginFormat>[static_cast<std::size_t>(i) % 6];
        plugin.name = u"Plugin %1"_s.arg(i * 7919 % kPlugins, 6, 10, QChar(u'0'));
        plugin.manufacturer = u"Maker %1"_s.arg(i % kMakers);
        plugin.originalPath = u"/plugins/%1"_s.arg(i);
        plugin.currentPath = plugin.originalPath;
        plugin.isEnabled = i % 5 != 0;
        plugins.push_back(std::move(plugin));
    }
    return plugins;
}

double milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double medianOf(const std::function<double()>& measure)
{
    std::vector<double> values;
    for (int i = 0; i < kRepeats; ++i)
        values.push_back(measure());
    std::nth_element(values.begin(), values.begin() + kRepeats / 2, values.end());
    return values[kRepeats / 2];
}

/// Processes all pending events, including painting.
void settle()
{
    for (int turn = 0; turn < 3; ++turn) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

void report(const char* title, double state, double window)
{
    std::printf("%-44s %10.2f %10.2f\n", title, state, window);
}

/// Prints the time of the state change and the time that the window needs to show it.
void measure(const char* title, const std::function<void(int)>& change)
{
    int turn = 0;
    double state = 0;
    const double whole = medianOf([&] {
        const int now = turn++;
        double own = 0;
        const double all = milliseconds([&] {
            own = milliseconds([&] { change(now); });
            settle();
        });
        state = std::max(state, own);
        return all - own;
    });
    report(title, state, whole);
}

/// The same for the search field, which reloads 50 ms after each letter.
void measureTyping(const char* title, PluginManagerViewModel& viewModel, const std::function<void()>& prepare)
{
    int turn = 0;
    double state = 0;
    const double window = medianOf([&] {
        prepare();
        settle();
        viewModel.searchText = u"Plugin 0"_s + QString::number(turn++);
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
        const double all = milliseconds(settle);
        const double own = milliseconds([&] { viewModel.refreshFromDatabase(); });
        settle();
        state = std::max(state, own);
        return all - own;
    });
    report(title, state, window);
}

void measureTitle()
{
    const std::clock_t before = std::clock();
    const double waited = milliseconds([] { QTest::qWait(6'000); });
    const double used = 1000.0 * double(std::clock() - before) / CLOCKS_PER_SEC;
    std::printf("%-44s %9.2f%%\n", "idle window with its turning title, of a core", 100 * used / waited);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTemporaryDir root;
    const auto services = platform::makePlatformServices(platform::SystemLayout::sandbox(root.path()),
                                                         platform::Elevation::none);
    const platform::Platform platform = services->platform();
    const auto diskAccess = platform::makeFullDiskAccess(platform.layout);
    const SharedObjects shared{PluginDatabase::shared(platform),
                               ActivityLogManager::shared(platform),
                               ProgressWindowManager::shared(platform),
                               UADCleanupManager::shared(platform, PluginDatabase::shared(platform)),
                               UpdateChecker::shared(platform),
                               *diskAccess};
    AppDelegate delegate(platform, shared);
    delegate.applicationDidFinishLaunching();
    QTest::qWait(300); // the first scan, of an empty root
    PluginManagerViewModel& viewModel =
        static_cast<ContentView*>(delegate.window()->centralWidget())->pluginManager();
    shared.database.replaceAllPlugins(makePlugins());
    viewModel.refreshAllState();
    viewModel.showAllPlugins = true;
    settle();

    std::printf("%-44s %10s %10s\n", "100,000 plugins, worst and median of 9", "state ms", "window ms");
    measureTyping("a letter is typed: reload of the first page", viewModel, [] {});
    viewModel.searchText = QString();
    viewModel.refreshFromDatabase();
    measure("a maker is chosen or left out", [&](int turn) {
        viewModel.selectedManufacturers = turn % 2 == 0 ? QSet<QString>{u"Maker 7"_s} : QSet<QString>{};
    });
    viewModel.selectedManufacturers.clear();
    measure("\"Load All\" and back to the first page", [&](int turn) {
        if (turn % 2 == 0)
            viewModel.loadAllPages();
        else
            viewModel.refreshFromDatabase();
    });
    viewModel.loadAllPages();
    settle();
    auto* table = delegate.window()->findChild<PluginTableView*>(u"pluginTable"_s);
    measure("a scroll by a page with all rows loaded",
            [&](int turn) { table->verticalScrollBar()->setValue(turn * 100'000); });
    measureTyping("a letter is typed with all rows loaded", viewModel, [&] { viewModel.loadAllPages(); });
    measureTitle();
    return 0;
}
