#include "HostileTree.h"
#include "OperationsFixture.h"

#include "platform/posix/PrivateFolder.h"

#include <sys/resource.h>

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

} // namespace

class ChangesTest : public OperationsTest {
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

    std::optional<platform::FreedesktopScriptRunner> m_prompt;
};

TEST_F(ChangesTest, FilesRowsReloadAndLogInThisOrder)
{
    const QString path = kVst3 + u"Foo.vst3"_s;
    m_root.addBundle(path);
    scan();
    QStringList steps;
    const auto note = [&](const QString& step) {
        const AudioPlugins found = m_database.queryPlugins({}, "name"_L1, true, 10, 0);
        const QString state = found.empty() ? u"gone"_s : found[0].statusValue();
        const bool agrees =
            found.empty() ? !m_root.exists(path) : m_system.files.exists(found[0].currentPath);
        steps.append(step + u' ' + state + (agrees ? u""_s : u" but the disk differs"_s));
    };
    model().plugins.observe(&model(), [&] { note(u"reload"_s); });
    m_log.entries.observe(&model(), [&] { note(u"log"_s); });
    m_system.scripts.whileRunning = [&] { note(u"script"_s); };
    const struct {
        const char* title;
        std::function<QCoro::Task<>(AudioPlugins)> change;
        QString before;
        QString after;
        QString logged;
    } cases[] = {
        {"disable", [this](AudioPlugins all) { return model().togglePlugin(all[0]); }, u"Enabled"_s,
         u"Disabled"_s, u"Disabled Foo"_s},
        {"enable many", [this](AudioPlugins all) { return model().toggleMultiplePlugins(std::move(all)); },
         u"Disabled"_s, u"Enabled"_s, u"Enabled Foo"_s},
        {"delete", [this](AudioPlugins all) { return model().deletePlugins(std::move(all)); }, u"Enabled"_s,
         u"gone"_s, u"Deleted Foo"_s},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.title);
        const AudioPlugin before = row(u"Foo"_s);
        const Tree tree = treeOf(m_root.at(u"/Library"));
        const int posts = countPosts();
        steps.clear();
        m_system.scripts.failNext(u"User canceled."_s);
        runTask(each.change({before}));
        EXPECT_EQ(steps, QStringList{u"script "_s + each.before}) << "a failure changes nothing";
        EXPECT_EQ(difference(treeOf(m_root.at(u"/Library")), tree), "");
        EXPECT_EQ(row(u"Foo"_s), before);
        EXPECT_EQ(countPosts(), posts);
        ASSERT_TRUE(model().error->has_value());
        EXPECT_EQ((*model().error)->kind(), PluginError::Kind::permissionDenied);

        steps.clear();
        runTask(each.change({before}));
        EXPECT_EQ(steps, (QStringList{u"script "_s + each.before, u"reload "_s + each.after,
                                      u"log "_s + each.after}));
        EXPECT_EQ(logged().value(0), each.logged);
        EXPECT_TRUE(model().error->has_value()) << "only a scan clears it";
        model().error.clear();
    }
}

TEST_F(ChangesTest, DeletionTakesRowsAndSelectionWithIt)
{
    for (const QString& name : {u"Gone"_s, u"Kept"_s, u"Missing"_s, u"Unpicked"_s})
        m_root.addBundle(kVst3 + name + u".vst3"_s);
    m_root.addBundle(kDisabledVst3 + u"Off.vst3"_s);
    m_root.addBundle(u"/Applications/Waves/Plug-Ins V14/Disabled/Wave.bundle");
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility.app");
    scan();
    for (const AudioPlugin& each : rows({u"Gone"_s, u"Kept"_s, u"Missing"_s, u"Off"_s, u"Wave"_s}))
        model().collectSelection({each.id});
    model().refreshFromDatabase();
    m_root.addFile(kVst3 + u"Off.vst3"_s, "came back meanwhile");
    m_system.files.remove(m_root.at(kVst3 + u"Missing.vst3"_s));
    const QUuid kept = row(u"Kept"_s).id;

    runTask(model().deletePlugins(rows({u"Off"_s, u"Gone"_s, u"Wave"_s, u"Missing"_s})));
    EXPECT_FALSE(model().error->has_value());
    EXPECT_EQ(m_root.names(kVst3), (QStringList{u"Kept.vst3"_s, u"Off.vst3"_s, u"Unpicked.vst3"_s}))
        << "a disabled plugin goes where it is, not where it would belong";
    EXPECT_EQ(states(), (QStringList{u"Kept Enabled"_s, u"Unpicked Enabled"_s}));
    EXPECT_EQ(model().persistedSelections, QSet<QUuid>{kept});
    EXPECT_EQ(*model().selectedPlugins, QSet<QUuid>{kept});
    EXPECT_EQ(model().cachedPluginKeysTransfer->keys, QStringList{u"Kept|VST3"_s});
    EXPECT_EQ(model().consolidatedBulkPlugins->size(), 5U) << "the pane keeps what it showed";
    EXPECT_EQ(logged(),
              (QStringList{u"Deleted Off"_s, u"Deleted Gone"_s, u"Deleted Wave"_s, u"Deleted Missing"_s}));
    EXPECT_TRUE(m_system.processes.starts.empty() && m_progress.calls.isEmpty());

    // The second of three fails: the first is gone, and its row goes with the next scan.
    standIn(u"rm"_s, "[ $n = 2 ] && { echo busy >&2; exit 1; }\nexec /bin/rm \"$@\"\n");
    m_root.addBundle(kVst3 + u"Alpha.vst3"_s);
    scan();
    const QStringList before = states();
    runTask(model().deletePlugins(rows({u"Alpha"_s, u"Kept"_s, u"Unpicked"_s})));
    EXPECT_TRUE((*model().error)->payload().contains(u"busy"_s));
    EXPECT_EQ(states(), before);
    scan();
    EXPECT_EQ(states(), (QStringList{u"Kept Enabled"_s, u"Off Enabled"_s, u"Unpicked Enabled"_s}));
}

TEST_F(ChangesTest, LeavesBehindWhatEachFailureMay)
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
        platform::makePrivateFolder(m_system.layout.temporary);
        m_root.addFolder(kDisabledVst3);
    }
}

TEST_F(ChangesTest, ShowsThePanelFromFiftyOneOn)
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

TEST_F(ChangesTest, ReadsTheCounterEvery80Milliseconds)
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

TEST_F(ChangesTest, HidesThePanelWhenTheWindowIsGone)
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

TEST_F(ChangesTest, ABatchFlipsEachByItsOwnState)
{
    const QString waves = u"/Applications/Waves/Plug-Ins V14/"_s;
    m_root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/User's.clap");
    m_root.addBundle(kDisabledVst3 + u"Back.vst3"_s);
    m_root.addBundle(waves + u"On.bundle"_s);
    m_root.addBundle(waves + u"Disabled/Off.bundle"_s);
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.app");
    scan();
    int changes = 0;
    m_log.entries.observe(&model(), [&] { ++changes; });
    toggle(rows({u"Off"_s, u"User's"_s, u"Back"_s, u"On"_s}));
    EXPECT_FALSE(model().error->has_value());
    EXPECT_EQ(m_system.scripts.sources.size(), 1);
    EXPECT_EQ(logged(),
              (QStringList{u"Disabled User's"_s, u"Disabled On"_s, u"Enabled Off"_s, u"Enabled Back"_s}));
    EXPECT_EQ(changes, 2) << "one call for each direction";
    EXPECT_EQ(m_system.processes.starts.size(), 1U) << "once, as one of them has come back";
    const AudioPlugins before = m_database.queryPlugins({}, "name"_L1, true, 100, 0);
    scan();
    for (const AudioPlugin& each : before) {
        EXPECT_EQ(row(each.name).currentPath, each.currentPath);
        EXPECT_EQ(row(each.name).isEnabled, each.isEnabled);
    }
    toggle(rows({u"Off"_s}));
    EXPECT_EQ(m_system.processes.starts.size(), 1U) << "not after disabling";
}

TEST_F(ChangesTest, TakesAllVersionsOfAWavesPluginTogether)
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

TEST_F(ChangesTest, RegistersWavesAudioUnitsAfterEnablingOnly)
{
    m_root.addBundle(u"/Applications/Waves/Plug-Ins V14/Foo.bundle");
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.app");
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.txt");
    m_root.addFolder(u"/Applications/Waves/WaveShells V15");
    m_root.addFolder(u"/Applications/Waves/waveshells V16/Waves AU Reg Utility.app");
    scan();
    runTask(model().togglePlugin(row(u"Foo"_s)));
    EXPECT_TRUE(m_system.processes.starts.empty());
    runTask(model().togglePlugin(row(u"Foo"_s)));
    const QString utility = m_root.at(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.app");
    const std::vector<RecordingLauncher::Start> wanted{
        {m_root.at(u"/usr/bin/open"), {u"-a"_s, utility, u"--args"_s, u"--silent"_s}}};
    EXPECT_EQ(m_system.processes.starts, wanted);

    m_system.processes.fails = true;
    runTask(model().togglePlugin(row(u"Foo"_s)));
    runTask(model().togglePlugin(row(u"Foo"_s)));
    EXPECT_FALSE(model().error->has_value()) << "a failed start is no failed toggle";
}

} // namespace orvanlite::test
