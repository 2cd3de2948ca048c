// Profiles of a large library, in milliseconds of processor time (best of several runs): 30 profiles on
// 20,000 plugins. The cost of redrawing the profiles' rows versus comparing every row from scratch, and of
// the files versus their plain bytes.

#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "profiles/ProfileManager.h"
#include "records/ActivityLogManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace orvanlite {

namespace {

constexpr int kPlugins = 20'000;
constexpr int kProfiles = 30;

template <typename Prepare, typename Run>
double best(int rounds, Prepare prepare, Run run)
{
    double least = std::numeric_limits<double>::max();
    for (int round = 0; round < rounds; ++round) {
        prepare();
        const std::clock_t start = std::clock();
        run();
        least = std::min(least, 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

template <typename Run>
double best(int rounds, Run run)
{
    return best(
        rounds, [] {}, run);
}

void print(const char* what, double time, const char* remark = "")
{
    std::printf("%-58s %9.3f  %s\n", what, time, remark);
    std::fflush(stdout);
}

AudioPlugins makePlugins()
{
    AudioPlugins plugins;
    for (int i = 0; i < kPlugins; ++i) {
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = u"Sample Plugin %1 of a Library"_s.arg(i);
        plugin.format = allCases<PluginFormat>[static_cast<std::size_t>(i) % 6];
        plugin.isEnabled = i % 7 != 0;
        plugin.originalPath = plugin.currentPath = u"/Library/Audio/"_s + plugin.name;
        plugins.push_back(plugin);
    }
    return plugins;
}

struct Bench {
    QTemporaryDir folder;
    platform::SystemLayout layout = platform::SystemLayout::sandbox(QDir(folder.path()).canonicalPath());
    std::unique_ptr<platform::PlatformServices> services =
        platform::makePlatformServices(layout, platform::Elevation::none);
    platform::Platform platform = services->platform();
    PluginDatabase database{platform, layout.applicationFolder() + u"/plugins.db"_s};
    ActivityLogManager log{platform};
    PluginManagerViewModel model{platform, database, log};
};

void benchRows(Bench& bench, const ProfileManager& profiles)
{
    PluginManagerViewModel& model = bench.model;
    const AudioPlugins plugins = *model.plugins;
    qint64 total = 0;
    const auto countAll = [&] {
        for (const PluginProfile& profile : *profiles.profiles)
            total += model.profileChangeCount(profile);
    };
    print("30 rows, each compared from the start, for comparison", best(5, [&] {
              for (const PluginProfile& profile : *profiles.profiles) {
                  const ProfileChanges changes = ProfileManager::computeChanges(profile, plugins);
                  total += std::ssize(changes.toEnable) + std::ssize(changes.toDisable);
              }
          }));
    print("30 rows, the first redraw of all", best(1, countAll));
    print("30 rows, first redraw after a change of the plugins",
          best(
              5, [&] { model.plugins = plugins; }, countAll),
          "after the first of all");
    print("30 rows, every further redraw", best(50, countAll), total > 0 ? "" : "NO CHANGES");
    model.activeProfile = profiles.profiles->front();
    print("refreshProfileChanges", best(20, [&] { model.refreshProfileChanges(); }));
    model.loadAllPages();
    const auto slice = [&] { total += std::ssize(model.filteredPlugins()); };
    print("filteredPlugins, first after a change, all pages loaded",
          best(
              20, [&] { model.profileViewFilter = u"enabled"_s; }, slice));
    print("filteredPlugins, every further one", best(50, slice));
}

void benchFiles(Bench& bench, ProfileManager& profiles, const AudioPlugins& plugins)
{
    const QString path = bench.layout.applicationFolder() + u"/profiles.json"_s;
    print("updateProfile, all 30 profiles written",
          best(3, [&] { profiles.updateProfile(profiles.profiles->front(), plugins); }));
    const auto content = bench.platform.files.read(path, std::numeric_limits<qint64>::max());
    if (!content)
        qFatal("the profiles have not been written");
    print("  of that: the bytes alone",
          best(3, [&] { bench.platform.files.write(path, *content, platform::WriteMode::inPlace); }),
          qPrintable(u"%1 MB"_s.arg(content->size() / 1e6, 0, 'f', 1)));
    std::size_t read = 0;
    const double reading = best(3, [&] { read = ProfileManager(bench.platform).profiles->size(); });
    print("all 30 profiles read", reading, read == std::size_t(kProfiles) ? "" : "NOT ALL");
    print("  of that: the bytes alone",
          best(3, [&] { (void)bench.platform.files.read(path, std::numeric_limits<qint64>::max()); }));

    const QString document = bench.layout.applicationFolder() + u"/document.json"_s;
    const std::pair<const char*, QByteArray> strangers[] = {
        {"50 MB document: nested lists", QByteArray(50'000'000, '[')},
        {"50 MB document: an unknown member",
         "{\"x\":[" + QByteArray("[],").repeated(16'000'000) + "0],\"id\":1}"},
        {"50 MB document: short keys",
         "{\"enabledPlugins\":[" + QByteArray("\"a\",").repeated(12'000'000) + "\"a\"]}"},
    };
    for (const auto& [what, text] : strangers) {
        bench.platform.files.write(document, text, platform::WriteMode::inPlace);
        bool isRefused = false;
        const double time = best(1, [&] {
            try {
                profiles.importProfile(document);
            } catch (const std::exception&) {
                isRefused = true;
            }
        });
        print(what, time, isRefused ? "refused" : "ACCEPTED");
    }
}

void run()
{
    Bench bench;
    bench.database.replaceAllPlugins(makePlugins());
    bench.model.refreshAllState();
    AudioPlugins plugins = *bench.model.plugins;
    {
        ProfileManager writer(bench.platform);
        for (int i = 0; i < kProfiles; ++i) {
            // A few changes per profile.
            for (std::size_t j = 0; j < 40; ++j) {
                AudioPlugin& plugin = plugins[(static_cast<std::size_t>(i) * 97 + j * 31) % plugins.size()];
                plugin.isEnabled = !plugin.isEnabled;
            }
            writer.saveProfile(u"Profile %1"_s.arg(i), plugins);
        }
    }
    ProfileManager profiles(bench.platform); // reads the file, as after a start
    benchRows(bench, profiles);
    benchFiles(bench, profiles, plugins);
}

} // namespace

} // namespace orvanlite

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    orvanlite::run();
    return 0;
}
