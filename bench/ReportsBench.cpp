// Reports of 1,000, 10,000 and 100,000 plugins: milliseconds of processor time per 1,000 rows (best of
// several runs), file size, and peak memory beyond the plugins themselves.

#include "model/Uuid.h"
#include "records/CSVReport.h"
#include "records/PDFReport.h"

#include <QFile>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace orvanlite {

namespace {

constexpr double kPDFGoal = 35;
constexpr double kCSVGoal = 2;
const Date kNow = Date::fromUnix(1'700'000'000);

template <typename Run>
double best(int rounds, Run run)
{
    double least = std::numeric_limits<double>::max();
    for (int round = 0; round < rounds; ++round) {
        const std::clock_t start = std::clock();
        run();
        least = std::min(least, 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

void print(const char* what, double perThousand, double goal)
{
    std::printf("  %-36s %8.2f  %s %.0f\n", what, perThousand, perThousand <= goal ? "within" : "ABOVE",
                goal);
    std::fflush(stdout);
}

/// Memory use in kilobytes, current or peak ("VmRSS:", "VmHWM:").
double memory(const QByteArray& field)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.simplified().split(' ').value(1).toDouble();
    }
    return 0;
}

void forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

AudioPlugins makePlugins(int count, QStringView script)
{
    AudioPlugins plugins;
    for (int i = 0; i < count; ++i) {
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = u"%1 Channel Compressor %2 of a Library"_s.arg(script).arg(i * 7919 % count);
        plugin.manufacturer = u"Studio Manufacturer %1"_s.arg(i % 211);
        plugin.format = allCases<PluginFormat>[static_cast<std::size_t>(i) % 6];
        plugin.isEnabled = i % 7 != 0;
        plugin.version = u"%1.%2.%3"_s.arg(i % 9).arg(i % 31).arg(i % 4);
        plugin.lastUsed = Date{kNow.sinceReference - i % 900 * 86400.0};
        plugins.push_back(plugin);
    }
    return plugins;
}

void bench(int count)
{
    const int rounds = count > 20'000 ? 3 : 10;
    const double thousands = count / 1000.0;
    const AudioPlugins plugins = makePlugins(count, u"Ultra");
    std::printf("%d plugins\n", count);
    ExportRows rows;
    const double sort = best(rounds, [&] { rows = sortPlugins(plugins, ExportSortOption::manufacturer); });
    std::printf("  %-36s %8.2f\n", "sort by manufacturer and name", sort / thousands);
    const ExportColumns columns = columnOrder(ExportSortOption::manufacturer);
    print("CSV", best(rounds, [&] { (void)generateCSV(rows, columns, kNow); }) / thousands, kCSVGoal);

    malloc_trim(0);
    forgetPeak();
    const double before = memory("VmRSS:");
    qsizetype size = 0;
    const auto draw = [&] { size = generatePDF(rows, columns, ExportSortOption::manufacturer, kNow).size(); };
    const double first = best(1, draw);
    const double peak = memory("VmHWM:") - before;
    print("PDF", std::min(first, best(rounds - 1, draw)) / thousands, kPDFGoal);
    std::printf("  %-36s %8.2f MB file, %.1f MB more memory at the peak\n", "",
                static_cast<double>(size) / 1e6, peak / 1024);
}

void benchShaped()
{
    const AudioPlugins plugins = makePlugins(1000, u"音源 Ώ");
    const ExportRows rows = sortPlugins(plugins, ExportSortOption::name);
    const double time = best(5, [&] {
        (void)generatePDF(rows, columnOrder(ExportSortOption::name), ExportSortOption::name, kNow);
    });
    std::printf("PDF of names that are shaped             %8.2f\n", time);
}

} // namespace

} // namespace orvanlite

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    for (const int count : {1000, 10'000, 100'000})
        orvanlite::bench(count);
    orvanlite::benchShaped();
    return 0;
}
