// The catalogue compared with its lower bounds: replacing all rows versus the sqlite3 shell's import of the
// same rows, and every query versus its bare statement stepped without reading the rows. Medians, in
// milliseconds.

#include "catalogue/PluginDatabase.h"
#include "model/TextOrder.h"
#include "model/Uuid.h"
#include "platform/Platform.h"

#include <sqlite3.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace orvanlite {

namespace {

constexpr int kRows = 100'000;
constexpr int kPage = 100;

/// Sum of what was read, so that the compiler cannot optimise a run away.
std::size_t g_seen = 0;

using Run = std::function<void()>;

double milliseconds(const Run& run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

/// Medians of alternating runs, so that both see the same load: at least 7 runs, for half a second.
std::pair<double, double> medians(const Run& ours, const Run& floor)
{
    std::vector<double> ourTimes;
    std::vector<double> floorTimes;
    double spent = 0;
    while (ourTimes.size() < 7 || (spent < 500 && ourTimes.size() < 2001)) {
        ourTimes.push_back(milliseconds(ours));
        floorTimes.push_back(milliseconds(floor));
        spent += ourTimes.back() + floorTimes.back();
    }
    return {median(ourTimes), median(floorTimes)};
}

void printRow(const char* name, double ours, double floor, double goal)
{
    const double ratio = ours / floor;
    std::printf("%-46s %10.3f %10.3f %7.2f", name, ours, floor, ratio);
    if (goal > 0)
        std::printf("   %s %.1f", ratio <= goal ? "within" : "ABOVE", goal);
    std::printf("\n");
    std::fflush(stdout);
}

void printHead(const char* title, const char* floor)
{
    std::printf("\n%-46s %10s %10s %7s\n", title, "ours", floor, "ratio");
}

AudioPlugins samplePlugins(int count)
{
    QRandomGenerator random(1);
    AudioPlugins plugins(static_cast<std::size_t>(count));
    for (AudioPlugin& plugin : plugins) {
        plugin.id = makeUuid();
        plugin.name = u"Channel Strip %1"_s.arg(random.bounded(1'000'000));
        plugin.manufacturer = u"Maker of Sound %1"_s.arg(random.bounded(300));
        plugin.format = allCases<PluginFormat>[random.bounded(quint32(allCases<PluginFormat>.size()))];
        plugin.originalPath =
            u"/Library/Audio/Plug-Ins/%1/%2.bundle"_s.arg(rawValue(plugin.format), plugin.name);
        plugin.isEnabled = random.bounded(4) > 0;
        plugin.currentPath = plugin.isEnabled ? plugin.originalPath
                                              : u"/Library/Audio/Plug-Ins/Disabled/%1/%2.bundle"_s.arg(
                                                    rawValue(plugin.format), plugin.name);
        plugin.version = u"%1.%2.%3"_s.arg(random.bounded(9)).arg(random.bounded(20)).arg(random.bounded(99));
        plugin.bundleIdentifier = u"com.maker.strip%1"_s.arg(random.bounded(1'000'000));
        plugin.lastUsed = Date::fromUnix(1'600'000'000 + random.bounded(100'000'000));
    }
    return plugins;
}

/// The rows as CSV for the shell; no value needs quotes.
void writeCsv(const AudioPlugins& plugins, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    for (const AudioPlugin& plugin : plugins) {
        const QStringList cells{uuidText(plugin.id),
                                plugin.name,
                                plugin.manufacturer,
                                rawValue(plugin.format),
                                plugin.originalPath,
                                plugin.currentPath,
                                plugin.isEnabled ? u"1"_s : u"0"_s,
                                plugin.version.value_or(QString()),
                                plugin.bundleIdentifier.value_or(QString()),
                                QString::number(plugin.lastUsed.value_or(Date()).unixTime(), 'f', 1)};
        file.write(cells.join(u',').toUtf8() + '\n');
    }
}

void runShell(const QString& database, const QStringList& commands)
{
    QProcess shell;
    shell.start(u"sqlite3"_s, QStringList({u"-batch"_s, database}) + commands);
    if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
        qFatal("the sqlite3 shell failed: %s", shell.readAllStandardError().constData());
}

/// Writes a whole scan into an empty file and over the previous rows. Both sides open, write and close the
/// file; the start time of the shell's process is subtracted.
void benchReplace(const platform::Platform& platform, const QString& folder, int count)
{
    const AudioPlugins plugins = samplePlugins(count);
    const QString csv = folder + u"/rows.csv"_s;
    const QString path = folder + u"/ours.db"_s;
    const QString shellPath = folder + u"/shell.db"_s;
    writeCsv(plugins, csv);
    const Run ours = [&] { PluginDatabase(platform, path).replaceAllPlugins(plugins); };
    const Run shell = [&] {
        runShell(shellPath, {u"PRAGMA synchronous=NORMAL"_s, u"BEGIN"_s, u"DELETE FROM plugins"_s,
                             u".import --csv \"%1\" plugins"_s.arg(csv), u"COMMIT"_s});
    };
    const Run shellStart = [&] { runShell(u":memory:"_s, {u"SELECT 1"_s}); };
    const auto newFile = [](const QString& file) {
        for (const QString& end : {u""_s, u"-wal"_s, u"-shm"_s})
            QFile::remove(file + end);
    };

    std::vector<double> oursNew;
    std::vector<double> oursAgain;
    std::vector<double> shellNew;
    std::vector<double> shellAgain;
    std::vector<double> starts;
    for (int i = 0; i < (count > 10'000 ? 5 : 21); ++i) {
        newFile(path);
        newFile(shellPath);
        // The same schema and journal mode for both: empty catalogues.
        for (const QString& file : {path, shellPath})
            const PluginDatabase empty(platform, file);
        oursNew.push_back(milliseconds(ours));
        shellNew.push_back(milliseconds(shell));
        oursAgain.push_back(milliseconds(ours));
        shellAgain.push_back(milliseconds(shell));
        starts.push_back(milliseconds(shellStart));
    }
    const double start = median(starts);
    const QByteArray rows = QByteArray::number(count) + " rows";
    printRow(rows + " into an empty file", median(oursNew), median(shellNew) - start, 1.0);
    printRow(rows + " over the last scan", median(oursAgain), median(shellAgain) - start, 1.0);
}

/// The text of the last statement that any connection of this process ran.
QByteArray g_lastStatement;

void recordStatements()
{
    const auto listen = [](sqlite3* db, char**, const void*) {
        const auto record = [](unsigned, void*, void* statement, void*) {
            g_lastStatement = sqlite3_sql(static_cast<sqlite3_stmt*>(statement));
            return 0;
        };
        return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, record, nullptr);
    };
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(+listen));
}

/// Runs the statement to its end without reading rows. Texts are bound first, then numbers.
void stepOnly(sqlite3* db, const QByteArray& sql, const QByteArrayList& texts,
              const std::vector<int>& numbers)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, sql.constData(), static_cast<int>(sql.size()) + 1, &statement, nullptr);
    int parameter = 1;
    for (const QByteArray& text : texts)
        sqlite3_bind_text(statement, parameter++, text.constData(), static_cast<int>(text.size()),
                          SQLITE_STATIC);
    for (const int number : numbers)
        sqlite3_bind_int(statement, parameter++, number);
    while (sqlite3_step(statement) == SQLITE_ROW)
        ++g_seen;
    sqlite3_finalize(statement);
}

QByteArrayList parametersOf(const PluginFilter& filter)
{
    QByteArrayList texts;
    if (!filter.searchText.isEmpty())
        texts << '%' + filter.searchText.toUtf8() + '%' << '%' + filter.searchText.toUtf8() + '%';
    QStringList formats;
    for (const PluginFormat format : filter.formats)
        formats << rawValue(format);
    for (const QStringList& sorted :
         {plainSorted(formats), plainSorted(filter.manufacturers), plainSorted(filter.pluginKeys)}) {
        for (const QString& text : sorted)
            texts << text.toUtf8();
    }
    return texts;
}

struct QueryCase {
    const char* name;
    PluginFilter filter{};
    QLatin1StringView column = "name"_L1;
    bool ascending = true;
    int offset = 0;
};

std::vector<QueryCase> queryCases(const AudioPlugins& plugins)
{
    QSet<QString> someKeys;
    QSet<QString> manyKeys;
    for (std::size_t i = 0; i < 1000; ++i) {
        manyKeys << pluginKey(plugins[i * 97]);
        if (i < 20)
            someKeys << pluginKey(plugins[i * 97]);
    }
    const QSet<QString> manufacturers{u"Maker of Sound 7"_s, u"Maker of Sound 70"_s};
    std::vector<QueryCase> cases{
        {"search, many hits", {.searchText = u"strip 12"_s}},
        {"search, few hits", {.searchText = u"strip 12345"_s}},
        {"search, no hit", {.searchText = u"nowhere"_s}},
        {"one format", {.formats = {PluginFormat::vst3}}},
        {"three formats", {.formats = {PluginFormat::vst3, PluginFormat::au, PluginFormat::clap}}},
        {"two manufacturers", {.manufacturers = manufacturers}},
        {"20 keys", {.pluginKeys = someKeys}},
        {"1000 keys", {.pluginKeys = manyKeys}},
        {"search, format, manufacturers", {u"strip 1"_s, {PluginFormat::vst3}, manufacturers, {}}},
        {"offset 90000", {}, "name"_L1, true, 90'000},
        {"name, descending", {}, "name"_L1, false},
    };
    static constexpr struct {
        QLatin1StringView column;
        const char* ascending;
        const char* descending;
    } columns[] = {
        {"manufacturer"_L1, "manufacturer, ascending", "manufacturer, descending"},
        {"format"_L1, "format, ascending", "format, descending"},
        {"isEnabled"_L1, "isEnabled, ascending", "isEnabled, descending"},
        {"version"_L1, "version, ascending", "version, descending"},
        {"lastUsed"_L1, "lastUsed, ascending", "lastUsed, descending"},
    };
    for (const auto& row : columns) {
        cases.push_back({row.ascending, {}, row.column, true});
        cases.push_back({row.descending, {}, row.column, false});
    }
    return cases;
}

/// Our call compared with its bare statement on a second connection.
void benchCall(const char* name, sqlite3* db, const Run& ours, const QByteArrayList& texts,
               const std::vector<int>& numbers, double goal)
{
    ours();
    const QByteArray sql = g_lastStatement;
    const auto [own, floor] = medians(ours, [&] { stepOnly(db, sql, texts, numbers); });
    printRow(name, own, floor, goal);
}

void benchQueries(const platform::Platform& platform, const QString& folder)
{
    const AudioPlugins plugins = samplePlugins(kRows);
    const QString path = folder + u"/queries.db"_s;
    recordStatements();
    PluginDatabase database(platform, path);
    database.replaceAllPlugins(plugins);
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    // The same cache size as the catalogue.
    sqlite3_exec(db, "PRAGMA cache_size=-16000", nullptr, nullptr, nullptr);

    printHead("a page of 100 of 100000 rows", "step only");
    const auto page = [&](const QueryCase& each, double goal) {
        const Run ours = [&] {
            g_seen +=
                database.queryPlugins(each.filter, each.column, each.ascending, kPage, each.offset).size();
        };
        benchCall(each.name, db, ours, parametersOf(each.filter), {kPage, each.offset}, goal);
    };
    page({"first page by name (goal: 0.3 ms)"}, 0);
    for (const QueryCase& each : queryCases(plugins))
        page(each, 1.2);

    printHead("other queries of 100000 rows", "step only");
    const PluginFilter search{.searchText = u"strip 12"_s};
    const auto call = [&](const char* name, const Run& ours, const QByteArrayList& texts = {}) {
        benchCall(name, db, ours, texts, {}, 0);
    };
    call("totalCount", [&] { g_seen += std::size_t(database.totalCount({})); });
    call(
        "totalCount, search", [&] { g_seen += std::size_t(database.totalCount(search)); },
        parametersOf(search));
    call("getAllFilteredPluginIds",
         [&] { g_seen += std::size_t(database.getAllFilteredPluginIds({}).size()); });
    call(
        "getAllFilteredPluginIds, search",
        [&] { g_seen += std::size_t(database.getAllFilteredPluginIds(search).size()); },
        parametersOf(search));
    call("getAllPluginKeys", [&] { g_seen += std::size_t(database.getAllPluginKeys().size()); });
    call("getDistinctManufacturers",
         [&] { g_seen += std::size_t(database.getDistinctManufacturers().size()); });
    call("countPlugins", [&] { g_seen += std::size_t(database.countPlugins(true)); });
    QSet<QUuid> ids;
    QByteArrayList idTexts;
    for (std::size_t i = 0; i < 1000; ++i)
        ids << plugins[i * 97].id;
    for (const QUuid& id : ids)
        idTexts << uuidBytes(id);
    std::sort(idTexts.begin(), idTexts.end());
    call(
        "getPluginsByIds, 1000 ids", [&] { g_seen += database.getPluginsByIds(ids).size(); }, idTexts);
    const AudioPlugin& one = plugins[kRows / 2];
    std::printf("%-46s %10.3f\n", "updatePlugin", medians([&] { database.updatePlugin(one); }, [] {}).first);
    sqlite3_close(db);
}

} // namespace

} // namespace orvanlite

int main(int argc, char** argv)
{
    using namespace orvanlite;
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const auto services = platform::makePlatformServices(platform::SystemLayout::sandbox(folder.path()),
                                                         platform::Elevation::none);
    const platform::Platform platform = services->platform();
    if (argc < 2 || qstrcmp(argv[1], "queries") != 0) {
        printHead("a whole scan", "shell");
        benchReplace(platform, folder.path(), 10'000);
        benchReplace(platform, folder.path(), kRows);
    }
    benchQueries(platform, folder.path());
    return g_seen == 0 ? 1 : 0;
}
