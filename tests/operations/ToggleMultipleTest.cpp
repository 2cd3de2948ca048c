#include "OperationsFixture.h"

#include "operations/BatchScript.h"

#include <QRegularExpression>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

namespace orvanlite::test {

namespace {

const QString kVst3 = u"/Library/Audio/Plug-Ins/VST3/"_s;
const QString kDisabledVst3 = u"/Library/Audio/Plug-Ins/Disabled/VST3/"_s;

/// No file can grow beyond this while it lives: a full disk, without filling one.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit smaller{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &smaller);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

/// A full copy of a file of the batch that waits to be run.
struct WaitingFile {
    QString name;
    QByteArray content;
    unsigned mode = 0;
};

} // namespace

class ToggleMultipleTest : public OperationsTest {
protected:
    void toggle(AudioPlugins plugins) { runTask(model().toggleMultiplePlugins(std::move(plugins))); }
    void addVst3(const QStringList& names)
    {
        for (const QString& name : names)
            m_root.addFile(kVst3 + name + u".vst3"_s, name.toUtf8());
    }
    /// Makes a prompt that ends with this status instead of running anything.
    void prompt(int status)
    {
        standIn(u"prompt"_s, "exit " + QByteArray::number(status) + '\n');
        m_prompt.emplace(m_system.layout, m_root.at(u"/tools/prompt"));
        m_system.scripts.runner = &*m_prompt;
    }
    [[nodiscard]] std::vector<WaitingFile> waitingFiles() const
    {
        std::vector<WaitingFile> waiting;
        for (const QString& name : temporaryFiles()) {
            const QString path = m_system.layout.temporary + u'/' + name;
            struct stat status {};
            ::stat(path.toUtf8().constData(), &status);
            waiting.push_back(
                {name, m_system.files.read(path, 1 << 20).value_or("?"), status.st_mode & 07777});
        }
        return waiting;
    }

    std::optional<platform::FreedesktopScriptRunner> m_prompt;
};

TEST_F(ToggleMultipleTest, LeavesBehindWhatEachFailureMay)
{
    const auto move = [this](const QByteArray& first, const QByteArray& then = {}) {
        standIn(u"mv"_s, first + "\n/bin/mv \"$@\"\n" + then);
    };
    const QByteArray blockCounter =
        "[ $n = 4 ] || exit 0\np=$(echo \"$temporary\"/*progress*); rm \"$p\"; mkdir \"$p\"\n";
    const auto blockFolder = [this] {
        m_system.files.remove(m_system.layout.temporary);
        m_system.files.write(m_system.layout.temporary, "x", platform::WriteMode::inPlace);
    };
    const platform::ScriptOutcome wordless{std::nullopt, platform::ScriptErrorDictionary()};
    const struct {
        const char* title;
        std::function<void()> arrange;
        QString moved; ///< on disk
        QString error; ///< its beginning; empty: all rows are updated and logged, and nothing is reported
        int temporaryFiles = 0;
        rlim_t sizeLimit = RLIM_INFINITY;
    } cases[] = {
        {"nothing fails", [] {}, u"ABCD"_s, u""_s},
        {"no temporary folder", blockFolder, u""_s, u"Unknown error: Not a directory"_s},
        {"no room for the script", [] {}, u""_s, u"Unknown error: File too large"_s, 1, 16},
        {"cancelled prompt", [this] { prompt(126); }, u""_s, u"Permission denied: User canceled."_s},
        {"refused password", [this] { prompt(127); }, u""_s,
         u"Permission denied: The authorization was denied."_s},
        {"no words", [&] { m_system.scripts.answerNext(wordless); }, u""_s,
         u"Permission denied: AppleScript error"_s},
        {"chmod fails", [this] { standIn(u"chmod"_s, "echo no >&2; exit 1\n"); }, u""_s,
         u"Permission denied: no"_s},
        {"no script object counts as done", [this] { m_system.scripts.answerNext({}); }, u""_s, u""_s},
        {"one move fails", [&] { move("[ $n = 2 ] && exit 1"); }, u"ACD"_s, u""_s},
        {"the last move fails", [&] { move("[ $n = 4 ] && exit 1"); }, u"ABC"_s, u""_s},
        {"the last counter line fails", [&] { move("", blockCounter); }, u"ABCD"_s,
         u"Permission denied: /"_s},
        {"killed", [&] { move("[ $n = 3 ] && kill -9 $PPID && exit 1"); }, u"AB"_s, u"Permission denied: "_s},
    };
    const QStringList all{u"A"_s, u"B"_s, u"C"_s, u"D"_s};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.title);
        addVst3(all);
        scan();
        const QStringList before = states();
        m_log.clear();
        m_system.scripts.runner = &m_runner;
        each.arrange();
        const int posts = countPosts();
        {
            const FileSizeLimit limit(each.sizeLimit);
            toggle(rows(all));
        }
        QStringList onDisk;
        for (const QString& name : all) {
            const QString file = name + u".vst3"_s;
            const bool isMoved = each.moved.contains(name);
            EXPECT_EQ(m_root.content((isMoved ? kDisabledVst3 : kVst3) + file), name.toUtf8());
            EXPECT_FALSE(m_root.exists((isMoved ? kVst3 : kDisabledVst3) + file));
            onDisk.append(name + (isMoved ? u" Disabled"_s : u" Enabled"_s));
        }
        const bool isDone = each.error.isEmpty();
        EXPECT_EQ(states(), isDone ? QStringList(before).replaceInStrings(u"En"_s, u"Dis"_s) : before);
        EXPECT_EQ(model().plugins->front().isEnabled, !isDone);
        EXPECT_EQ(m_log.entries->size(), isDone ? 4U : 0U);
        EXPECT_EQ(countPosts() - posts, isDone ? 2 : 0) << "reloads";
        const QString error = model().error->has_value() ? (*model().error)->errorDescription() : QString();
        EXPECT_TRUE(isDone ? error.isEmpty() : error.startsWith(each.error)) << qPrintable(error);
        EXPECT_EQ(temporaryFiles().size(), each.temporaryFiles);
        EXPECT_FALSE(*model().isRunningScript);
        scan();
        EXPECT_EQ(states(), onDisk) << "the next scan brings the rows in line";
        for (const QString& path :
             {m_root.at(u"/Library"), m_root.at(u"/tools"), m_system.layout.temporary}) {
            if (m_system.files.exists(path))
                m_system.files.remove(path);
        }
        m_system.files.createDirectory(m_system.layout.temporary);
        m_root.addFolder(kDisabledVst3);
    }
}

TEST_F(ToggleMultipleTest, KeepsItsFilesPrivateUntilTheyRun)
{
    addVst3({u"A"_s, u"B"_s});
    scan();
    const AudioPlugins plugins = rows({u"B"_s, u"A"_s});
    std::vector<BatchItem> items;
    for (const AudioPlugin& each : plugins)
        items.push_back({each, each.currentPath, m_root.at(kDisabledVst3 + each.name + u".vst3"_s)});
    std::vector<WaitingFile> waiting;
    m_system.scripts.whileRunning = [&] { waiting = waitingFiles(); };
    for (const bool isEmpty : {false, true}) {
        SCOPED_TRACE(isEmpty);
        m_log.clear();
        m_system.scripts.sources.clear();
        const QStringList before = states();
        toggle(isEmpty ? AudioPlugins() : plugins);
        ASSERT_EQ(waiting.size(), 2U);
        const auto match =
            QRegularExpression(u"^orvanlite_batch_([0-9A-F]{8}-(?:[0-9A-F]{4}-){3}[0-9A-F]{12})\\.sh$"_s)
                .match(waiting[0].name);
        ASSERT_TRUE(match.hasMatch()) << qPrintable(waiting[0].name);
        EXPECT_EQ(waiting[1].name, u"orvanlite_progress_"_s + match.captured(1) + u".txt"_s);
        EXPECT_EQ(waiting[0].mode, 0600U);
        EXPECT_EQ(waiting[1].mode, 0600U);
        const QString folder = m_system.layout.temporary + u'/';
        const QString script =
            batchScript(isEmpty ? std::vector<BatchItem>() : items, folder + waiting[1].name);
        EXPECT_EQ(waiting[0].content, script.toUtf8());
        EXPECT_EQ(waiting[1].content, "0");
        EXPECT_EQ(m_system.scripts.sources, QStringList{batchAppleScript(folder + waiting[0].name)});
        EXPECT_EQ(temporaryFiles(), QStringList());
        EXPECT_FALSE(model().error->has_value());
        if (isEmpty) { // it is no short cut, and changes nothing
            EXPECT_EQ(states(), before);
            EXPECT_TRUE(m_log.entries->empty());
        }
    }
}

TEST_F(ToggleMultipleTest, ShowsThePanelFromFiftyOneOn)
{
    const struct {
        int disabled;
        int enabled;
        bool fails;
        QStringList calls;
    } cases[] = {
        {0, 50, false, {}},
        {25, 25, true, {}},
        {0, 51, false, {u"Disabling 51 plugins… #51"_s, u"hide"_s}},
        {51, 0, false, {u"Enabling 51 plugins… #51"_s, u"hide"_s}},
        {1, 50, false, {u"Applying changes to 51 plugins… #51"_s, u"hide"_s}},
        {2, 98, true, {u"Applying changes to 100 plugins… #100"_s, u"hide"_s}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.disabled);
        SCOPED_TRACE(each.enabled);
        fill(each.disabled + each.enabled);
        m_log.clear();
        AudioPlugins plugins = model().allFilteredPlugins();
        for (int i = 0; i < std::ssize(plugins); ++i)
            plugins[static_cast<std::size_t>(i)].isEnabled = i >= each.disabled;
        m_progress.calls.clear();
        std::size_t loggedAtTheEnd = 0;
        m_progress.whenHidden = [&] { loggedAtTheEnd = m_log.entries->size(); };
        if (each.fails)
            m_system.scripts.failNext(u"no"_s);
        else
            m_system.scripts.answerNext({QString(), std::nullopt});
        toggle(plugins);
        EXPECT_EQ(m_progress.calls, each.calls);
        const bool isWrittenAtTheEnd = !each.calls.isEmpty() && !each.fails;
        EXPECT_EQ(loggedAtTheEnd, isWrittenAtTheEnd ? plugins.size() : 0U) << "it stays until all is written";
    }
}

TEST_F(ToggleMultipleTest, ReadsTheCounterEvery80Milliseconds)
{
    using namespace std::chrono_literals;
    fill(10);
    const struct {
        QByteArray content;
        std::vector<double> reported;
    } cases[] = {
        {"1", {0.1}},          {"", {}},      {"\n", {}},  {"rubbish", {}}, {"3x", {}},    {" 4 \n", {0.4}},
        {"+5", {0.5}},         {"-2", {0.0}}, {"0x7", {}}, {"7.5", {}},     {"10", {1.0}}, {"11", {1.0}},
        {"9999999999", {1.0}}, {"\xff", {}}};
    m_system.scripts.answerNext({QString(), std::nullopt});
    m_system.scripts.whileRunning = [&] {
        EXPECT_EQ(m_progress.values, std::vector<double>{0.0});
        const QString file = m_system.layout.temporary + u'/' + temporaryFiles().value(1);
        for (const auto& each : cases) {
            SCOPED_TRACE(each.content.constData());
            m_progress.values.clear();
            m_system.files.write(file, each.content, platform::WriteMode::inPlace);
            m_system.clock.advance(79ms);
            EXPECT_EQ(m_progress.values, std::vector<double>());
            m_system.clock.advance(1ms);
            EXPECT_EQ(m_progress.values, each.reported);
        }
        m_system.files.remove(file);
        m_progress.values.clear();
        m_system.clock.advance(80ms);
        EXPECT_EQ(m_progress.values, std::vector<double>()) << "no file";
        EXPECT_EQ(m_system.clock.sleepers(), 1) << "goes on all the same";
    };
    toggle(model().allFilteredPlugins());
    m_system.clock.advance(160ms);
    EXPECT_EQ(m_system.clock.sleepers(), 0) << "ends with the script";
    EXPECT_FALSE(model().error->has_value()) << "a missing counter is no failure";
}

TEST_F(ToggleMultipleTest, HidesThePanelWhenTheWindowIsGone)
{
    PluginManagerViewModel* gone = new PluginManagerViewModel(m_system.platform, m_database, m_log);
    gone->setBatchProgress(&m_progress);
    fill(60);
    AudioPlugins plugins = gone->allFilteredPlugins();
    m_system.scripts.whileRunning = [&] { delete gone; };
    m_system.scripts.answerNext({QString(), std::nullopt});
    const QStringList before = states();
    runTask(gone->toggleMultiplePlugins(plugins));
    EXPECT_EQ(m_progress.calls.value(1), u"hide"_s);
    EXPECT_EQ(states(), before);
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(ToggleMultipleTest, FlipsEachByItsOwnStateOnOneRoad)
{
    const QString waves = u"/Applications/Waves/Plug-Ins V14/"_s;
    m_root.addBundle(u"/Library/Audio/Plug-Ins/Components/It's.component");
    m_root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/User's.clap");
    m_root.addBundle(u"/Library/Application Support/Avid/Audio/Plug-Ins/Pro.aaxplugin");
    m_root.addBundle(kDisabledVst3 + u"Back.vst3"_s);
    m_root.addBundle(waves + u"On.bundle"_s);
    m_root.addBundle(waves + u"Disabled/Off.bundle"_s);
    m_root.addBundle(waves + u"Disabled/Off too.bundle"_s);
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.app");
    scan();
    ASSERT_FALSE(m_root.exists(u"/Library/Audio/Plug-Ins/VST3")) << "the batch makes it, also to enable";
    m_system.scripts.sources.clear();
    int changes = 0;
    m_log.entries.observe(&model(), [&] { ++changes; });
    toggle(rows({u"It's"_s, u"Off"_s, u"User's"_s, u"Back"_s, u"Pro"_s, u"On"_s, u"Off too"_s}));
    EXPECT_FALSE(model().error->has_value());
    EXPECT_EQ(m_system.scripts.sources.size(), 1);
    for (const QString& place : {u"/Library/Audio/Plug-Ins/Disabled/Audio Units/It's.component"_s,
                                 u"/Library/Audio/Plug-Ins/Disabled/CLAP/User's.clap"_s,
                                 u"/Library/Application Support/Avid/Audio/Plug-Ins (Unused)/Pro.aaxplugin"_s,
                                 kVst3 + u"Back.vst3"_s, waves + u"Disabled/On.bundle"_s,
                                 waves + u"Off.bundle"_s, waves + u"Off too.bundle"_s})
        EXPECT_TRUE(m_root.exists(place)) << qPrintable(place);
    EXPECT_EQ(logged(),
              (QStringList{u"Disabled It's"_s, u"Disabled User's"_s, u"Disabled Pro"_s, u"Disabled On"_s,
                           u"Enabled Off"_s, u"Enabled Back"_s, u"Enabled Off too"_s}));
    EXPECT_EQ(changes, 2) << "one call for each direction";
    EXPECT_EQ(m_system.processes.starts.size(), 1U) << "once, however many have come back";
    const QStringList after = states();
    const AudioPlugins before = m_database.queryPlugins({}, "name"_L1, true, 100, 0);
    scan();
    EXPECT_EQ(states(), after);
    for (const AudioPlugin& each : before)
        EXPECT_EQ(row(each.name).currentPath, each.currentPath);
    toggle(rows({u"Off"_s, u"Off too"_s}));
    EXPECT_EQ(m_system.processes.starts.size(), 1U) << "not after disabling";
}

TEST_F(ToggleMultipleTest, GivesTwoItemsOfOneFileNameOnePlace)
{
    m_root.addFile(kVst3 + u"One/Same.vst3"_s, "one");
    m_root.addFile(kVst3 + u"Two/Same.vst3"_s, "two");
    m_root.addFile(kDisabledVst3 + u"Same.vst3"_s, "old");
    scan();
    AudioPlugins both = *model().plugins;
    std::erase_if(both, [](const AudioPlugin& each) { return !each.isEnabled; });
    std::sort(both.begin(), both.end(),
              [](const auto& a, const auto& b) { return a.currentPath < b.currentPath; });
    ASSERT_EQ(both.size(), 2U);
    toggle(both);
    EXPECT_EQ(m_root.content(kDisabledVst3 + u"Same.vst3"_s), "old");
    EXPECT_EQ(m_root.content(kDisabledVst3 + u"Same 1.vst3"_s), "two") << "the second move meets the first";
    EXPECT_EQ(m_root.names(kDisabledVst3), (QStringList{u"Same 1.vst3"_s, u"Same.vst3"_s}));
    for (const AudioPlugin& each : *model().plugins)
        EXPECT_EQ(each.currentPath.endsWith(u"Same 1.vst3"_s),
                  each.id == both[0].id || each.id == both[1].id);
}

TEST_F(ToggleMultipleTest, TakesAllVersionsOfAWavesPluginTogether)
{
    const QString v14 = u"/Applications/Waves/Plug-Ins V14/"_s;
    const QString v15 = u"/Applications/Waves/Plug-Ins V15/"_s;
    for (const QString& folder : {v14, v15}) {
        m_root.addBundle(folder + u"Foo.bundle"_s);
        m_root.addBundle(folder + u"foo.bundle"_s);
    }
    for (const QString& version : {u"14"_s, u"15"_s})
        m_root.addFolder(u"/Applications/Waves/WaveShells V"_s + version + u"/Waves AU Reg Utility.app"_s);
    m_root.addFile(kVst3 + u"Foo.vst3"_s, "no Waves");
    EXPECT_TRUE(model().allWavesPluginsMatchingName(u"Foo"_s).empty()) << "before the first scan";
    scan();
    const auto waves = [&] { return model().allWavesPluginsMatchingName(u"Foo"_s); };
    const auto place = [&](bool in14, bool in15) {
        EXPECT_EQ(m_root.exists(v14 + u"Foo.bundle"_s), in14);
        EXPECT_EQ(m_root.exists(v14 + u"Disabled/Foo.bundle"_s), !in14);
        EXPECT_EQ(m_root.exists(v15 + u"Foo.bundle"_s), in15);
        EXPECT_EQ(m_root.exists(v15 + u"Disabled/Foo.bundle"_s), !in15);
        EXPECT_TRUE(m_root.exists(v14 + u"foo.bundle"_s) && m_root.exists(kVst3 + u"Foo.vst3"_s));
    };
    m_system.scripts.sources.clear();
    runTask(model().togglePlugin(waves().at(0)));
    place(false, false);
    EXPECT_EQ(m_system.scripts.sources.size(), 1);
    EXPECT_TRUE(m_system.processes.starts.empty());
    EXPECT_EQ(logged(), (QStringList{u"Disabled Foo"_s, u"Disabled Foo"_s}));
    EXPECT_EQ((*m_log.entries)[0].timestamp, (*m_log.entries)[1].timestamp);

    runTask(model().togglePlugin(waves().at(1)));
    place(true, true);
    EXPECT_EQ(m_system.processes.starts.size(), 2U) << "one for each version";
    EXPECT_EQ(m_system.processes.starts[0].arguments.value(3), u"--silent"_s);

    const AudioPlugin first = waves().at(0);
    toggle({first}); // a list means its own rows only
    const bool was14 = first.version == u"V14"_s;
    place(!was14, was14);
    runTask(model().togglePlugin(waves().at(0)));
    place(was14, !was14); // rows of mixed state swap
    EXPECT_EQ(m_system.processes.starts.size(), 4U);
    EXPECT_FALSE(model().error->has_value());
}

} // namespace orvanlite::test
