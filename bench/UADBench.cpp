// The clean-up of UAD demos: a profile of 500 demos against a catalogue of 9,999 plugins, in milliseconds
// (best of several runs), compared with the query that it contains.

#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "platform/Platform.h"
#include "uad/UADCleanupManager.h"
#include "uad/UADPluginMatcher.h"
#include "uad/UADProfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

using namespace Qt::StringLiterals;

namespace orvanlite {

namespace {

constexpr double kGoal = 50;
constexpr int kEntries = 500;
constexpr int kPlugins = 9999;

template <typename Run>
double best(Run run)
{
    double least = std::numeric_limits<double>::max();
    for (int round = 0; round < 15; ++round) {
        const auto start = std::chrono::steady_clock::now();
        run();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        least = std::min(least, time.count());
    }
    return least;
}

void print(const char* what, double time, const char* remark = "")
{
    std::printf("    %-54s %9.3f  %s\n", what, time, remark);
    std::fflush(stdout);
}

/// A name in the manufacturer's style; many names share words.
QString nameOf(int number)
{
    const QStringList manufacturers{u"Neve"_s,   u"API"_s,    u"SSL"_s, u"Teletronix"_s,
                                    u"Manley"_s, u"Studer"_s, u"AMS"_s};
    const QStringList kinds{u"Channel Strip"_s, u"Compressor"_s, u"Equalizer Collection"_s, u"Preamplifier"_s,
                            u"Mastering Limiter"_s};
    return u"UAD %1 %2 %3"_s.arg(manufacturers[number % manufacturers.size()])
        .arg(number)
        .arg(kinds[number / 7 % kinds.size()]);
}

/// `rowsOfName` rows per name: cycling through the formats, every second one mono.
AudioPlugins makePlugins(int rowsOfName)
{
    AudioPlugins plugins;
    for (int i = 0; i < kPlugins; ++i) {
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = nameOf(i / rowsOfName) + (i % rowsOfName % 2 == 1 ? u"(m)"_s : QString());
        plugin.manufacturer = u"Universal Audio"_s;
        plugin.format = allCases<PluginFormat>[static_cast<std::size_t>(i % 4)];
        plugin.originalPath = plugin.currentPath =
            u"/Library/Audio/Plug-Ins/%1/%2"_s.arg(rawValue(plugin.format), plugin.name);
        plugin.isEnabled = i % 11 != 0;
        plugins.push_back(plugin);
    }
    return plugins;
}

/// A third of the names as in the files, a third longer, a third with reordered words.
QString makeProfile()
{
    QString text = u"UAD-2 Plug-in Authorizations\n"_s;
    for (int i = 0; i < kEntries; ++i) {
        QString name = nameOf(i * 3);
        if (i % 3 == 1)
            name += u" Legacy"_s;
        else if (i % 3 == 2)
            name = u"UAD Legacy "_s + name.section(u' ', 2) + u' ' + name.section(u' ', 1, 1);
        text += name + u": Demo (%1 days left)\n"_s.arg(i % 14);
    }
    return text;
}

void bench(const char* title, int rowsOfName)
{
    const QTemporaryDir folder;
    const auto services = platform::makePlatformServices(
        platform::SystemLayout::sandbox(QDir(folder.path()).canonicalPath()), platform::Elevation::none);
    const platform::Platform platform = services->platform();
    PluginDatabase database(platform, platform.layout.applicationFolder() + u"/plugins.db"_s);
    const AudioPlugins plugins = makePlugins(rowsOfName);
    database.replaceAllPlugins(plugins);
    const QString profile = makeProfile();
    const UADPluginAuths entries = parsePluginAuthorizations(profile);
    const UADPluginMatcher matcher(plugins);
    std::size_t matched = 0;
    for (const UADPluginAuth& each : entries)
        matched += matcher.matches(each.name).empty() ? 0 : 1;
    UADCleanupManager manager(platform, database);

    std::printf("%s: %zu of %zu entries match\n", title, matched, entries.size());
    const double whole = best([&] { manager.parseAndCrossReference(profile); });
    print("parseAndCrossReference", whole, whole <= kGoal ? "within 50" : "ABOVE 50");
    print("  of that: the query",
          best([&] { (void)database.queryPlugins({}, "name"_L1, true, kPlugins, 0); }));
    print("  of that: parsing", best([&] { (void)parsePluginAuthorizations(profile); }));
    print("  of that: making the matcher", best([&] { const UADPluginMatcher matcher(plugins); }));
    print("  of that: 500 matches", best([&] {
              for (const UADPluginAuth& each : entries)
                  (void)matcher.matches(each.name);
          }));
}

} // namespace

} // namespace orvanlite

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    orvanlite::bench("five rows of a name", 5);
    orvanlite::bench("every name of its own", 1);
    return 0;
}
