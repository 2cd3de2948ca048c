#include "OperationsFixture.h"

#include "platform/posix/PrivateFolder.h"

#include <QScopeGuard>

#include <sys/resource.h>

#include <csignal>

namespace orvanlite::test {

namespace {

const QString kVst3 = u"/Library/Audio/Plug-Ins/VST3/"_s;
const QString kDisabledVst3 = u"/Library/Audio/Plug-Ins/Disabled/VST3/"_s;

/// Simulates a full disk: no file can grow beyond this during the guard's lifetime.
auto limitFileSizes(rlim_t bytes)
{
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit smaller{bytes, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &smaller);
    return qScopeGuard([before, handler] {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    });
}

} // namespace

class ChangesTest : public OperationsTest {
protected:
    void toggle(AudioPlugins plugins) { runTask(model().toggleMultiplePlugins(std::move(plugins))); }
    void toggleOne(const AudioPlugin& plugin) { runTask(model().togglePlugin(plugin)); }
};

TEST_F(ChangesTest, MovesFilesUpdatesRowsReloadsAndLogs)
{
    const QString path = kVst3 + u"Foo.vst3"_s;
    m_root.addBundle(path);
    scan();
    QStringList steps;
    const auto note = [&](const QString& step) {
        const AudioPlugins found = allRows();
        const bool agrees =
            found.empty() ? !m_root.exists(path) : m_system.files.exists(found[0].currentPath);
        steps.append(step + u' ' + (found.empty() ? u"gone"_s : found[0].statusValue()) +
                     (agrees ? u""_s : u" but the disk differs"_s));
    };
    model().plugins.observe(&model(), [&] { note(u"reload"_s); });
    m_log.entries.observe(&model(), [&] { note(u"log"_s); });
    m_system.scripts.whileRunning = [&] { note(u"script"_s); };
    const std::tuple<std::function<QCoro::Task<>(AudioPlugins)>, QString, QString, QString> cases[] = {
        {[this](AudioPlugins all) { return model().togglePlugin(all[0]); }, u"Enabled"_s, u"Disabled"_s,
         u"Disabled Foo"_s},
        {[this](AudioPlugins all) { return model().toggleMultiplePlugins(std::move(all)); }, u"Disabled"_s,
         u"Enabled"_s, u"Enabled Foo"_s},
        {[this](AudioPlugins all) { return model().deletePlugins(std::move(all)); }, u"Enabled"_s, u"gone"_s,
         u"Deleted Foo"_s},
    };
    for (const auto& [change, stateBefore, stateAfter, entry] : cases) {
        SCOPED_TRACE(qPrintable(entry));
        const AudioPlugin before = row(u"Foo"_s);
        const int posts = countPosts();
        steps.clear();
        m_system.scripts.failNext(u"User canceled."_s);
        runTask(change({before}));
        EXPECT_EQ(steps, QStringList{u"script "_s + stateBefore}) << "a failure changes nothing";
        EXPECT_EQ(row(u"Foo"_s), before);
        EXPECT_EQ(countPosts(), posts);
        ASSERT_TRUE(model().error->has_value());
        EXPECT_EQ((*model().error)->kind(), PluginError::Kind::permissionDenied);

        steps.clear();
        runTask(change({before}));
        EXPECT_EQ(steps, (QStringList{u"script "_s + stateBefore, u"reload "_s + stateAfter,
                                      u"log "_s + stateAfter}));
        EXPECT_EQ(logged().value(0), entry);
        EXPECT_TRUE(model().error->has_value()) << "only a scan clears it";
        model().error.clear();
    }
}

TEST_F(ChangesTest, DeletionRemovesRowsAndSelection)
{
    for (const QString& name : {u"Gone"_s, u"Kept"_s, u"Missing"_s, u"Unselected"_s})
        m_root.addBundle(kVst3 + name + u".vst3"_s);
    m_root.addBundle(kDisabledVst3 + u"Off.vst3"_s);
    m_root.addBundle(u"/Applications/Waves/Plug-Ins V14/Disabled/Wave.bundle");
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility.app");
    scan();
    for (const AudioPlugin& each : rows({u"Gone"_s, u"Kept"_s, u"Missing"_s, u"Off"_s, u"Wave"_s}))
        model().collectSelection({each.id});
    model().refreshFromDatabase();
    m_root.addFile(kVst3 + u"Off.vst3"_s, "reinstalled meanwhile");
    m_system.files.remove(m_root.at(kVst3 + u"Missing.vst3"_s));
    const QUuid kept = row(u"Kept"_s).id;

    runTask(model().deletePlugins(rows({u"Off"_s, u"Gone"_s, u"Wave"_s, u"Missing"_s})));
    EXPECT_FALSE(model().error->has_value());
    EXPECT_EQ(m_root.names(kVst3), (QStringList{u"Kept.vst3"_s, u"Off.vst3"_s, u"Unselected.vst3"_s}))
        << "a disabled plugin is deleted at its current path, not at its original one";
    EXPECT_EQ(states(), (QStringList{u"Kept Enabled"_s, u"Unselected Enabled"_s}));
    EXPECT_EQ(model().persistedSelections, QSet<QUuid>{kept});
    EXPECT_EQ(*model().selectedPlugins, QSet<QUuid>{kept});
    EXPECT_EQ(model().cachedPluginKeysTransfer->keys, QStringList{u"Kept|VST3"_s});
    EXPECT_EQ(model().consolidatedBulkPlugins->size(), 5U) << "the pane keeps what it showed";
    EXPECT_EQ(logged(),
              (QStringList{u"Deleted Off"_s, u"Deleted Gone"_s, u"Deleted Wave"_s, u"Deleted Missing"_s}));
    EXPECT_TRUE(m_system.processes.starts.empty() && m_progress.calls.isEmpty());

    // The second of three removals fails: the first plugin is gone, and its row disappears with the next
    // scan.
    replaceTool(u"rm"_s, "[ $n = 2 ] && { echo busy >&2; exit 1; }\nexec /bin/rm \"$@\"\n");
    m_root.addBundle(kVst3 + u"Alpha.vst3"_s);
    scan();
    const QStringList before = states();
    runTask(model().deletePlugins(rows({u"Alpha"_s, u"Kept"_s, u"Unselected"_s})));
    ASSERT_TRUE(model().error->has_value());
    EXPECT_TRUE((*model().error)->payload().contains(u"busy"_s));
    EXPECT_EQ(states(), before);
    scan();
    EXPECT_EQ(states(), (QStringList{u"Kept Enabled"_s, u"Off Enabled"_s, u"Unselected Enabled"_s}));
}

TEST_F(ChangesTest, PartialFailuresLeaveAKnownState)
{
    const auto move = [this](const QByteArray& first, const QByteArray& then = {}) {
        replaceTool(u"mv"_s, first + "\n/bin/mv \"$@\"\n" + then);
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
        {"no space for the script", [] {}, u""_s, u"Unknown error: File too large"_s, 1, 16},
        {"chmod fails", [this] { replaceTool(u"chmod"_s, "echo no >&2; exit 1\n"); }, u""_s,
         u"Permission denied: no"_s},
        {"one move fails", [&] { move("[ $n = 2 ] && exit 1"); }, u"ACD"_s, u""_s},
        {"one copy stops half-way", [&] { move("[ $n = 2 ] && { : > \"$2\"; exit 1; }"); }, u"ACD"_s, u""_s},
        {"the last move fails", [&] { move("[ $n = 4 ] && exit 1"); }, u"ABC"_s, u""_s},
        {"the last counter line fails", [&] { move("", blockCounter); }, u"ABCD"_s,
         u"Permission denied: /"_s},
        {"killed", [&] { move("[ $n = 3 ] && kill -9 $PPID && exit 1"); }, u"AB"_s, u"Permission denied: "_s},
    };
    const QStringList all{u"A"_s, u"B"_s, u"C"_s, u"D"_s};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.title);
        for (const QString& name : all)
            m_root.addFile(kVst3 + name + u".vst3"_s, name.toUtf8());
        scan();
        const QStringList before = states();
        m_log.clear();
        each.arrange();
        const int posts = countPosts();
        {
            const auto limit = limitFileSizes(each.sizeLimit);
            toggle(rows(all));
        }
        QStringList onDisk;
        for (const QString& name : all) {
            const bool isMoved = each.moved.contains(name);
            EXPECT_EQ(m_root.content((isMoved ? kDisabledVst3 : kVst3) + name + u".vst3"_s), name.toUtf8());
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
        EXPECT_EQ(states(), onDisk) << "the next scan corrects the rows";
        for (const QString& path :
             {m_root.at(u"/Library"), m_root.at(u"/tools"), m_system.layout.temporary}) {
            if (m_system.files.exists(path))
                m_system.files.remove(path);
        }
        platform::makePrivateFolder(m_system.layout.temporary);
        m_root.addFolder(kDisabledVst3);
    }
}

TEST_F(ChangesTest, SaysWhatIsGoingOnAndWhyItFailed)
{
    for (const QString& name : {u"A"_s, u"B"_s, u"C"_s})
        m_root.addFile(kVst3 + name + u".vst3"_s, "x");
    m_root.addFile(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/User.clap", "x");
    m_root.addFile(kDisabledVst3.chopped(6)); // where its folder would be
    scan();
    QStringList seen;
    model().workStatus.observe(&model(), [&] { seen.append(model().workStatus->text); });
    const QString waiting = u"Waiting for the password…"_s;
    const std::pair<platform::ScriptErrorDictionary, QString> failures[] = {
        {platform::scriptError(u"User canceled."_s, -128), u"Cancelled. Nothing was changed."_s},
        {platform::scriptError(u"Denied."_s, -60005),
         u"Administrator rights were denied. Nothing was changed."_s},
        {platform::scriptError(u"No agent."_s, -60007), u"No agent. Nothing was changed."_s},
        {platform::scriptError(u"mv: B:\nFull"_s, 1),
         u"Failed, press Scan to see what was changed: mv: B: Full"_s},
        {{}, u"Failed, press Scan to see what was changed: AppleScript error"_s},
    };
    for (const auto& [error, text] : failures) {
        m_system.scripts.answerNext({std::nullopt, error});
        seen.clear();
        toggle(rows({u"A"_s, u"B"_s, u"C"_s}));
        EXPECT_EQ(seen, (QStringList{waiting, text}));
    }
    seen.clear();
    toggleOne(row(u"User"_s));
    EXPECT_TRUE(seen.size() == 1 && seen[0].startsWith(u"Failed: Not a directory: /"_s))
        << qPrintable(seen.join(u'|'));
    seen.clear();
    m_system.scripts.whileRunning = [this] { scan(); }; // does not hide that a script runs
    toggle(rows({u"A"_s, u"B"_s, u"C"_s}));
    runTask(model().deletePlugins({row(u"A"_s)}));
    EXPECT_EQ(seen, (QStringList{waiting, u"Moving 3 plugins…"_s, QString(), waiting, u"Deleting 1 plugin…"_s,
                                 QString()}));
}

TEST_F(ChangesTest, ShowsThePanelFrom51PluginsOn)
{
    const std::tuple<int, int, bool, QString> cases[] = {
        {0, 50, false, {}},
        {0, 51, false, u"Disabling 51 plugins… #51"_s},
        {51, 0, false, u"Enabling 51 plugins… #51"_s},
        {1, 50, false, u"Applying changes to 51 plugins… #51"_s},
        {2, 98, true, u"Applying changes to 100 plugins… #100"_s},
    };
    for (const auto& [disabled, enabled, fails, shown] : cases) {
        SCOPED_TRACE(testing::Message() << disabled << ' ' << enabled);
        fill(disabled + enabled);
        m_log.clear();
        AudioPlugins plugins = model().allFilteredPlugins();
        for (int i = 0; i < std::ssize(plugins); ++i)
            plugins[static_cast<std::size_t>(i)].isEnabled = i >= disabled;
        m_progress.calls.clear();
        std::size_t loggedAtTheEnd = 0;
        m_progress.whenHidden = [&] { loggedAtTheEnd = m_log.entries->size(); };
        if (fails)
            m_system.scripts.failNext(u"no"_s);
        else
            m_system.scripts.answerNext({QString(), std::nullopt});
        toggle(plugins);
        EXPECT_EQ(m_progress.calls, shown.isEmpty() ? QStringList() : (QStringList{shown, u"hide"_s}));
        EXPECT_EQ(loggedAtTheEnd, shown.isEmpty() || fails ? 0U : plugins.size())
            << "stays open until everything is written";
    }
}

TEST_F(ChangesTest, ReadsTheCounterEvery80Milliseconds)
{
    using namespace std::chrono_literals;
    fill(10);
    const std::pair<QByteArray, std::vector<double>> cases[] = {
        {"", {}},    {"rubbish", {}}, {"3x", {}},    {" 4 \n", {0.4}},      {"+5", {0.5}}, {"-2", {0.0}},
        {"0x7", {}}, {"7.5", {}},     {"11", {1.0}}, {"9999999999", {1.0}}, {"\xff", {}}};
    m_system.scripts.answerNext({QString(), std::nullopt});
    m_system.scripts.whileRunning = [&] {
        EXPECT_EQ(m_progress.values, std::vector<double>{0.0});
        const QString file = m_system.layout.temporary + u'/' + temporaryFiles().value(1);
        for (const auto& [content, reported] : cases) {
            SCOPED_TRACE(content.constData());
            m_progress.values.clear();
            m_system.files.write(file, content, platform::WriteMode::inPlace);
            m_system.clock.advance(79ms);
            EXPECT_EQ(m_progress.values, std::vector<double>());
            m_system.clock.advance(1ms);
            EXPECT_EQ(m_progress.values, reported);
        }
        m_system.files.remove(file);
        m_system.clock.advance(80ms);
        EXPECT_EQ(m_system.clock.sleepers(), 1) << "continues without the file";
    };
    toggle(model().allFilteredPlugins());
    m_system.clock.advance(160ms);
    EXPECT_EQ(m_system.clock.sleepers(), 0) << "ends with the script";
    EXPECT_FALSE(model().error->has_value()) << "a missing counter is not an error";
}

TEST_F(ChangesTest, HidesThePanelWhenItsOwnerIsGone)
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

TEST_F(ChangesTest, ABatchTogglesEachPluginByItsOwnState)
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
    EXPECT_EQ(m_system.processes.starts.size(), 1U) << "once for one enabled Waves plugin";
}

TEST_F(ChangesTest, TogglesAllVersionsOfAWavesPluginTogether)
{
    const QString v14 = u"/Applications/Waves/Plug-Ins V14/"_s;
    const QString v15 = u"/Applications/Waves/Plug-Ins V15/"_s;
    for (const QString& folder : {v14, v15}) {
        m_root.addBundle(folder + u"Foo.bundle"_s);
        m_root.addBundle(folder + u"foo.bundle"_s);
    }
    for (const QString& utility :
         {u"WaveShells V14/Waves AU Reg Utility 14.app"_s, u"WaveShells V14/Waves AU Reg Utility 14.txt"_s,
          u"WaveShells V15/Waves AU Reg Utility.app"_s, u"WaveShells V16"_s,
          u"waveshells V17/Waves AU Reg Utility.app"_s})
        m_root.addFolder(u"/Applications/Waves/"_s + utility);
    m_root.addFile(kVst3 + u"Foo.vst3"_s, "not a Waves plugin");
    scan();
    const auto waves = [&] { return model().allWavesPluginsMatchingName(u"Foo"_s); };
    const auto expectEnabled = [&](bool in14, bool in15) {
        EXPECT_EQ(m_root.exists(v14 + u"Foo.bundle"_s), in14);
        EXPECT_EQ(m_root.exists(v14 + u"Disabled/Foo.bundle"_s), !in14);
        EXPECT_EQ(m_root.exists(v15 + u"Foo.bundle"_s), in15);
        EXPECT_EQ(m_root.exists(v15 + u"Disabled/Foo.bundle"_s), !in15);
        EXPECT_TRUE(m_root.exists(v14 + u"foo.bundle"_s) && m_root.exists(kVst3 + u"Foo.vst3"_s));
    };
    toggleOne(waves().at(0));
    expectEnabled(false, false);
    EXPECT_EQ(m_system.scripts.sources.size(), 1);
    EXPECT_TRUE(m_system.processes.starts.empty());
    EXPECT_EQ(logged(), (QStringList{u"Disabled Foo"_s, u"Disabled Foo"_s}));
    EXPECT_EQ((*m_log.entries)[0].timestamp, (*m_log.entries)[1].timestamp);

    toggleOne(waves().at(1));
    expectEnabled(true, true);
    QStringList started;
    for (const auto& [program, arguments] : m_system.processes.starts)
        started.append(QString(program + u' ' + arguments.join(u'|')).remove(m_root.path()));
    started.sort();
    const QString start = u"/usr/bin/open -a|/Applications/Waves/WaveShells V%1.app|--args|--silent"_s;
    EXPECT_EQ(started, (QStringList{start.arg(u"14/Waves AU Reg Utility 14"_s),
                                    start.arg(u"15/Waves AU Reg Utility"_s)}));

    const AudioPlugin first = waves().at(0);
    toggle({first}); // a batch contains its own rows only
    const bool was14 = first.version == u"V14"_s;
    expectEnabled(!was14, was14);
    toggleOne(waves().at(0));
    expectEnabled(was14, !was14); // rows of mixed state swap
    EXPECT_EQ(m_system.processes.starts.size(), 4U);
    m_system.processes.fails = true;
    toggleOne(waves().at(0));
    EXPECT_FALSE(model().error->has_value()) << "a failed start is not a failed toggle";
}

} // namespace orvanlite::test
