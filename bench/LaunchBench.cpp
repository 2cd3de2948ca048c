// Time from the start of the process to the first painted window and to the first full table, with 1,500
// plugins and more. Each launch is a separate process; prints medians.

#include "catalogue/PluginDatabase.h"
#include "demo/PluginLibrary.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/FullDiskAccess.h"
#include "platform/Platform.h"
#include "records/ActivityLogManager.h"
#include "shell/app/AppDelegate.h"
#include "shell/app/ContentView.h"
#include "shell/app/MainWindow.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/updates/UpdateChecker.h"
#include "uad/UADCleanupManager.h"

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <vector>

using namespace Qt::StringLiterals;
using namespace orvanlite;

namespace {

constexpr int kLaunches = 9;

using SteadyClock = std::chrono::steady_clock;

/// Prints the milliseconds since the previous call.
class Laps {
public:
    void print(const char* title)
    {
        const auto now = SteadyClock::now();
        std::printf("%s\t%.3f\n", title, std::chrono::duration<double, std::milli>(now - m_last).count());
        m_last = now;
    }

private:
    SteadyClock::time_point m_last = SteadyClock::now();
};

/// Detects the first paint of the window.
class FirstPaint final : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool handled = QObject::eventFilter(watched, event);
        if (event->type() == QEvent::Paint)
            m_hasPainted = true;
        return handled;
    }
    [[nodiscard]] bool hasPainted() const { return m_hasPainted; }

private:
    bool m_hasPainted = false;
};

int launch(int argc, char** argv, const QString& root)
{
    Laps laps;
    QApplication application(argc, argv);
    laps.print("QApplication");
    const auto services =
        platform::makePlatformServices(platform::SystemLayout::sandbox(root), platform::Elevation::none);
    const platform::Platform platform = services->platform();
    laps.print("platform services");
    PluginDatabase& database = PluginDatabase::shared(platform);
    ActivityLogManager& log = ActivityLogManager::shared(platform);
    laps.print("catalogue and log");
    const auto diskAccess = platform::makeFullDiskAccess(platform.layout);
    const SharedObjects shared{database,
                               log,
                               ProgressWindowManager::shared(platform),
                               UADCleanupManager::shared(platform, PluginDatabase::shared(platform)),
                               UpdateChecker::shared(platform),
                               *diskAccess};
    AppDelegate delegate(platform, shared);
    delegate.applicationDidFinishLaunching();
    laps.print("window and first page");
    FirstPaint painted;
    delegate.window()->centralWidget()->installEventFilter(&painted);
    while (!painted.hasPainted())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    laps.print("first paint");
    PluginManagerViewModel& viewModel =
        static_cast<ContentView*>(delegate.window()->centralWidget())->pluginManager();
    while (viewModel.plugins->empty() || *viewModel.isLoading)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    laps.print("first scan");
    return 0;
}

void measure(const QString& root)
{
    std::vector<QString> order;
    std::map<QString, std::vector<double>> times;
    for (int i = 0; i < kLaunches; ++i) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {u"--launch"_s, root});
        child.waitForFinished(-1);
        const QStringList lines = QString::fromUtf8(child.readAllStandardOutput()).split(u'\n');
        for (const QString& line : lines) {
            const QStringList parts = line.split(u'\t');
            if (parts.size() != 2)
                continue;
            if (!times.contains(parts[0]))
                order.push_back(parts[0]);
            times[parts[0]].push_back(parts[1].toDouble());
        }
    }
    double total = 0;
    std::printf("%-28s %10s\n", "launch, median of 9", "ms");
    for (const QString& title : order) {
        std::vector<double>& values = times[title];
        std::nth_element(values.begin(), values.begin() + std::ssize(values) / 2, values.end());
        const double median = values[values.size() / 2];
        if (title == u"first scan"_s)
            std::printf("%-28s %10.2f\n", "= to the first painted window", total);
        total += median;
        std::printf("%-28s %10.2f\n", qPrintable(title), median);
    }
    std::printf("%-28s %10.2f\n", "= to the scanned table", total);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 3 && QLatin1StringView(argv[1]) == "--launch"_L1)
        return launch(argc, argv, QString::fromUtf8(argv[2]));
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const int count = demo::makePluginLibrary(platform::SystemLayout::sandbox(folder.path()));
    std::printf("\nLaunch with %d plugins (%s)\n", count,
                qEnvironmentVariableIsEmpty("DISPLAY") ? "offscreen" : "on a display");
    measure(folder.path());
    return 0;
}
