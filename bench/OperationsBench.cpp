// Operations on many plugins: the time that blocks the windows, in milliseconds (best of several runs), and a
// whole batch of 2,000 plugins compared with its bare script run by the shell, on the same tree in the same
// run.

#include "catalogue/PluginDatabase.h"
#include "model/PluginLocations.h"
#include "model/Uuid.h"
#include "operations/BatchProgress.h"
#include "operations/PluginManagerViewModel.h"
#include "operations/ShellCommands.h"
#include "platform/Platform.h"
#include "platform/ScriptRunner.h"
#include "records/ActivityLogManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace orvanlite {

namespace {

constexpr double kGoal = 1.15;
constexpr int kBatch = 2'000;

template <typename Run>
double milliseconds(Run run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

template <typename Run>
double best(int rounds, Run run)
{
    double least = std::numeric_limits<double>::max();
    for (int round = 0; round < rounds; ++round)
        least = std::min(least, milliseconds(run));
    return least;
}

void print(const char* what, double time, const char* remark = "")
{
    std::printf("%-58s %9.2f  %s\n", what, time, remark);
    std::fflush(stdout);
}

/// Forwards scripts and keeps a copy of the file that the last one runs.
class KeepingScriptRunner final : public platform::ScriptRunner {
public:
    KeepingScriptRunner(platform::ScriptRunner& runner, QString folder)
        : m_runner(runner)
        , m_folder(std::move(folder))
    {}

    QByteArray script;
    QString progressFile;

    QCoro::Task<platform::ScriptOutcome> execute(QString source, std::function<void()> started) override
    {
        const QDir folder(m_folder);
        QFile file(folder.filePath(folder.entryList({u"*.sh"_s}, QDir::Files).value(0)));
        if (file.open(QIODevice::ReadOnly))
            script = file.readAll();
        progressFile = folder.filePath(folder.entryList({u"*.txt"_s}, QDir::Files).value(0));
        co_return co_await m_runner.execute(source, std::move(started));
    }

private:
    platform::ScriptRunner& m_runner;
    QString m_folder;
};

class CountingProgress final : public BatchProgress {
public:
    int reports = 0;
    void show(const QString&, int) override {}
    void hide() override {}
    void setProgress(double) override { ++reports; }
};

AudioPlugins makeRows(int count)
{
    constexpr std::array formats{PluginFormat::au, PluginFormat::vst3, PluginFormat::vst2,
                                 PluginFormat::clap};
    AudioPlugins rows;
    for (int i = 0; i < count; ++i) {
        AudioPlugin row;
        row.id = makeUuid();
        row.name = u"Sample Plugin %1"_s.arg((i * 7919) % count / 2); // two per name, unsorted
        row.manufacturer = u"Vendor %1"_s.arg(i % 400);
        row.format = formats[static_cast<std::size_t>(i) % formats.size()];
        row.originalPath = row.currentPath =
            u"/Library/Audio/Plug-Ins/%1/%2 %3"_s.arg(rawValue(row.format), row.name).arg(i);
        rows.push_back(row);
    }
    return rows;
}

/// A sandbox with a view model.
struct Bench {
    QTemporaryDir folder;
    platform::SystemLayout layout = platform::SystemLayout::sandbox(QDir(folder.path()).canonicalPath());
    std::unique_ptr<platform::PlatformServices> services =
        platform::makePlatformServices(layout, platform::Elevation::none);
    platform::Platform plain = services->platform();
    KeepingScriptRunner scripts{plain.scripts, layout.temporary};
    platform::Platform platform{plain.layout,
                                plain.files,
                                scripts,
                                plain.processes,
                                plain.defaults,
                                plain.notifications,
                                plain.loginItems,
                                plain.workspace,
                                plain.mainBundle,
                                plain.appearance,
                                plain.userNotifications,
                                plain.clock};
    PluginDatabase database{platform, layout.applicationFolder() + u"/plugins.db"_s};
    ActivityLogManager log{platform};
    PluginManagerViewModel model{platform, database, log};

    void await(QCoro::Task<> task)
    {
        QEventLoop loop;
        bool ended = false;
        const auto watch = [](QCoro::Task<> watched, QEventLoop* until, bool* flag) -> QCoro::Task<> {
            co_await std::move(watched);
            *flag = true;
            until->quit();
        };
        watch(std::move(task), &loop, &ended);
        if (!ended)
            loop.exec();
    }
};

void benchSelection()
{
    Bench bench;
    PluginManagerViewModel& model = bench.model;
    const AudioPlugins rows = makeRows(100'000);
    bench.database.replaceAllPlugins(rows);
    for (std::size_t i = 0; i < 10'000; ++i)
        model.persistedSelections.insert(rows[i * 10].id);

    print("getPluginsByIds, 10,000 of 100,000 rows",
          best(7, [&] { (void)bench.database.getPluginsByIds(model.persistedSelections); }),
          "part of all that follow");
    print("refreshBulkPane, 10,000 rows selected", best(7, [&] { model.refreshBulkPane(); }));
    print("updateCachedTransfer, 10,000 rows selected", best(7, [&] { model.updateCachedTransfer(); }));
    print("bulkActionPlugins, 10,000 rows selected", best(7, [&] { (void)model.bulkActionPlugins(); }));
    print("isFormatFullyActive, 10,000 rows selected",
          best(7, [&] { (void)model.isFormatFullyActive(PluginFormat::au); }));
    print("allFilteredPlugins, 100,000 rows", best(5, [&] { (void)model.allFilteredPlugins(); }));
    model.selectedFormats = QSet<PluginFormat>{PluginFormat::vst3};
    print("getAllFilteredPluginIds, 100,000 rows",
          best(5, [&] { (void)bench.database.getAllFilteredPluginIds({}); }), "part of the next");
    print("invertSelection, 100,000 rows, 75,000 selected by it", best(5, [&] { model.invertSelection(); }));
    print("  of that: getPluginsByIds",
          best(5, [&] { (void)bench.database.getPluginsByIds(model.persistedSelections); }));
    print("  of that: refreshBulkPane", best(5, [&] { model.refreshBulkPane(); }));
    print("  of that: updateCachedTransfer", best(5, [&] { model.updateCachedTransfer(); }));
    model.selectedFormats = QSet<PluginFormat>{PluginFormat::vst3, PluginFormat::au, PluginFormat::vst2};
    print("invertSelection, 100,000 rows, 25,000 selected by it", best(5, [&] { model.invertSelection(); }));
}

void benchScript()
{
    std::vector<BatchItem> items;
    for (const AudioPlugin& row : makeRows(10'000))
        items.push_back({row, row.currentPath, u"/Library/Audio/Plug-Ins/Disabled/It's/"_s + row.name});
    qsizetype bytes = 0;
    const double time = best(7, [&] { bytes = batchScript(items, u"/tmp/progress.txt"_s).toUtf8().size(); });
    print("batchScript, 10,000 items", time, qPrintable(u"%1 bytes"_s.arg(bytes)));
}

/// Runs the script file as the batch does, without our code around it.
double runAlone(const Bench& bench)
{
    const QString file = bench.layout.temporary + u"/alone.sh"_s;
    QFile script(file);
    if (!script.open(QIODevice::WriteOnly) || script.write(bench.scripts.script) < 0)
        qFatal("cannot write the script");
    script.close();
    const double time = milliseconds([&] {
        QProcess shell;
        shell.start(u"/bin/sh"_s, {u"-c"_s, u"chmod +x '%1' && '%1'"_s.arg(file)});
        if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
            qFatal("the script alone has failed");
    });
    QFile::remove(file);
    QFile::remove(bench.scripts.progressFile);
    return time;
}

/// Moves everything back, so that the same script can run again.
void restore(const AudioPlugins& plugins, const QString& disabledFolder)
{
    for (const AudioPlugin& plugin : plugins) {
        const QString name = plugin.originalPath.section(u'/', -1);
        if (!QFile::rename(disabledFolder + u'/' + name, plugin.originalPath))
            qFatal("a plugin has not been moved");
    }
}

void benchBatch()
{
    Bench bench;
    AudioPlugins plugins;
    for (int i = 0; i < kBatch; ++i) {
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = u"Sample Plugin %1"_s.arg(i);
        plugin.format = PluginFormat::vst3;
        plugin.originalPath = plugin.currentPath =
            bench.layout.system(u"/Library/Audio/Plug-Ins/VST3/") + plugin.name + u".vst3"_s;
        QDir().mkpath(plugin.originalPath + u"/Contents/MacOS"_s);
        plugins.push_back(plugin);
    }
    const QString disabled = PluginLocations(bench.layout).disabledFolder(plugins.front());
    CountingProgress progress;
    bench.model.setBatchProgress(&progress);
    double whole = std::numeric_limits<double>::max();
    double alone = whole;
    // Alternating, so that both see the same load.
    for (int round = 0; round < 4; ++round) {
        bench.database.replaceAllPlugins(plugins);
        whole =
            std::min(whole, milliseconds([&] { bench.await(bench.model.toggleMultiplePlugins(plugins)); }));
        if (*bench.model.dbDisabledCount != kBatch || bench.model.error->has_value())
            qFatal("the batch has failed");
        restore(plugins, disabled);
        alone = std::min(alone, runAlone(bench));
        restore(plugins, disabled);
    }
    const double ratio = whole / alone;
    std::printf(
        "%d plugins  script alone %9.2f  toggleMultiplePlugins %9.2f  ratio %5.3f  %s %.2f  (%d reports)\n",
        kBatch, alone, whole, ratio, ratio <= kGoal ? "within" : "ABOVE", kGoal, progress.reports);
}

} // namespace

} // namespace orvanlite

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    orvanlite::benchSelection();
    orvanlite::benchScript();
    orvanlite::benchBatch();
    return 0;
}
