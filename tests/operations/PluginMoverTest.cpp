#include "operations/PluginMover.h"

#include "HostileTree.h"
#include "OperationsFixture.h"
#include "operations/Detach.h"
#include "platform/Path.h"

#include <QRegularExpression>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace orvanlite::test {

namespace {

const QString kVst3 = u"/Library/Audio/Plug-Ins/VST3/"_s;
const QString kDisabledVst3 = u"/Library/Audio/Plug-Ins/Disabled/VST3/"_s;
const QString kUserVst3 = u"/Users/tester"_s + kVst3;

/// Works as another user while it lives. Without it nothing is forbidden: tests run as root.
class OtherUser {
public:
    OtherUser() { EXPECT_TRUE(::geteuid() != 0 || ::seteuid(kNobody) == 0); }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;
    ~OtherUser() { EXPECT_TRUE(::getuid() != 0 || ::seteuid(0) == 0); }

    static constexpr uid_t kNobody = 65534;
};

} // namespace

/// The mover on real files, without a catalogue and without views.
class PluginMoverTest : public OperationsTest {
protected:
    [[nodiscard]] AudioPlugin record(const QString& path, PluginFormat format = PluginFormat::vst3) const
    {
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = platform::baseName(platform::fileName(path));
        plugin.format = format;
        plugin.originalPath = plugin.currentPath = m_root.at(path);
        return plugin;
    }
    AudioPlugin toggle(AudioPlugin plugin)
    {
        runTask(keep(m_mover->toggle(std::move(plugin)), &m_changed));
        return m_changed;
    }
    AudioPlugins toggleAll(AudioPlugins plugins)
    {
        runTask(keep(m_mover->toggleAll(std::move(plugins), &m_progress), &m_allChanged));
        return m_allChanged;
    }
    /// The error that the task ends with; empty without one.
    static QString errorOf(QCoro::Task<> task)
    {
        try {
            runTask(std::move(task));
        } catch (const PluginError& error) {
            return error.errorDescription();
        } catch (const platform::FileError& error) {
            return u"File: "_s + error.message;
        }
        return {};
    }
    QString toggleError(AudioPlugin plugin)
    {
        return errorOf(keep(m_mover->toggle(std::move(plugin)), &m_changed));
    }
    QString batchError(AudioPlugins plugins)
    {
        return errorOf(keep(m_mover->toggleAll(std::move(plugins), nullptr), &m_allChanged));
    }
    QString deletionError(AudioPlugins plugins) { return errorOf(m_mover->remove(std::move(plugins))); }

    template <typename Value>
    static QCoro::Task<> keep(QCoro::Task<Value> task, Value* result)
    {
        *result = co_await std::move(task);
    }

    std::shared_ptr<PluginMover> m_mover = std::make_shared<PluginMover>(m_system.platform);
    AudioPlugin m_changed;
    AudioPlugins m_allChanged;
};

TEST_F(PluginMoverTest, EveryFormatHasItsFolderAndItsRoute)
{
    const QString components = u"/Library/Audio/Plug-Ins/Components/"_s;
    const QString disabled = u"/Library/Audio/Plug-Ins/Disabled/"_s;
    const QString avid = u"/Library/Application Support/Avid/Audio/Plug-Ins"_s;
    const QString waves = u"/Applications/Waves/Plug-Ins V14/"_s;
    const QString flush =
        u" && rm -rf ~/Library/Caches/AudioUnitCache/* '/Library/Caches/com.apple.audiounits.cache'"
        " 2>/dev/null && killall -9 AudioComponentRegistrar 2>/dev/null; true"_s;
    const struct {
        PluginFormat format;
        QString path;
        QString disabledPath;
        bool hasScript;
        QString commandEnd = {};
    } cases[] = {
        {PluginFormat::vst3, kVst3 + u"Acme/Foo.vst3"_s, disabled + u"VST3/Foo.vst3"_s, true},
        {PluginFormat::au, components + u"Foo.component"_s, disabled + u"Audio Units/Foo.component"_s, true,
         flush},
        {PluginFormat::aax, avid + u"/Foo.aaxplugin"_s, avid + u" (Unused)/Foo.aaxplugin"_s, true},
        {PluginFormat::wavesBundle, waves + u"Foo.bundle"_s, waves + u"Disabled/Foo.bundle"_s, true},
        {PluginFormat::vst2, u"/Users/tester/Library/Audio/Plug-Ins/VST/Foo.vst"_s,
         disabled + u"VST/Foo.vst"_s, false},
        {PluginFormat::au, u"/Users/tester"_s + components + u"Foo.component"_s,
         disabled + u"Audio Units/Foo.component"_s, false},
        {PluginFormat::clap, u"/Users/tester/Library/Audio/Plug-Ins/CLAP/Foo"_s, disabled + u"CLAP/Foo"_s,
         false},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(qPrintable(each.path));
        const AudioPlugin plugin = record(each.path, each.format);
        const QString folder = platform::parentFolder(each.disabledPath);
        for (const bool isBatch : {false, true}) {
            SCOPED_TRACE(isBatch);
            m_root.addBundle(each.path, "x");
            if (!each.hasScript)
                m_root.addFolder(folder);
            m_system.scripts.sources.clear();
            const AudioPlugin off = isBatch ? toggleAll({plugin}).at(0) : toggle(plugin);
            EXPECT_EQ(off.currentPath, m_root.at(each.disabledPath));
            EXPECT_EQ(off.originalPath, plugin.originalPath);
            EXPECT_FALSE(off.isEnabled);
            EXPECT_TRUE(!m_root.exists(each.path) && m_root.exists(each.disabledPath));
            const AudioPlugin on = isBatch ? toggleAll({off}).at(0) : toggle(off);
            EXPECT_EQ(on, plugin);
            EXPECT_TRUE(m_root.exists(each.path) && !m_root.exists(each.disabledPath));
            EXPECT_EQ(m_system.scripts.sources.size(), isBatch || each.hasScript ? 2 : 0);
            if (each.hasScript && !isBatch) {
                const QString source = u"do shell script \"mkdir -p '%4%1' && mv '%4%2' '%4%3'"_s.arg(
                    folder, each.path, each.disabledPath, m_root.path());
                QString end = each.commandEnd + u"\" with administrator privileges"_s;
                end.replace(u"'/Library"_s, u'\'' + m_root.at(u"/Library"));
                EXPECT_EQ(m_system.scripts.sources[0], source + end);
                EXPECT_EQ(m_system.scripts.sources[1], u"do shell script \"mv '%3%2' '%3%1'"_s.arg(
                                                           each.path, each.disabledPath, m_root.path()) +
                                                           end);
            }
        }
    }
}

TEST_F(PluginMoverTest, FindsFreeNamesAndReturnsToTheOriginalOne)
{
    for (const QString& name : {u"Foo.vst3"_s, u"Foo 1.vst3"_s, u"bare"_s})
        m_root.addFile(kDisabledVst3 + name, "old");
    for (const auto& [name, freeName] :
         {std::pair(u"Foo.vst3"_s, u"Foo 2.vst3"_s), {u"bare"_s, u"bare 1."_s}}) {
        m_root.addFile(kVst3 + name, "new");
        const AudioPlugin off = toggle(record(kVst3 + name));
        EXPECT_EQ(off.currentPath, m_root.at(kDisabledVst3 + freeName));
        EXPECT_EQ(m_root.content(kDisabledVst3 + freeName), "new");
        EXPECT_EQ(toggle(off).currentPath, m_root.at(kVst3 + name));
    }
    // Nothing has moved yet when a batch chooses its names, so that two of one name meet.
    m_root.addFile(kVst3 + u"One/Same.vst3"_s, "one");
    m_root.addFile(kVst3 + u"Two/Same.vst3"_s, "two");
    m_root.addFile(kDisabledVst3 + u"Same.vst3"_s, "old");
    for (const AudioPlugin& each :
         toggleAll({record(kVst3 + u"One/Same.vst3"_s), record(kVst3 + u"Two/Same.vst3"_s)}))
        EXPECT_EQ(each.currentPath, m_root.at(kDisabledVst3 + u"Same 1.vst3"_s));
    EXPECT_EQ(m_root.content(kDisabledVst3 + u"Same.vst3"_s), "old");
    EXPECT_EQ(m_root.content(kDisabledVst3 + u"Same 1.vst3"_s), "two");
}

TEST_F(PluginMoverTest, EmptiesTheAudioUnitCachesAndDoesNotNoticeAFailedMove)
{
    m_root.addFile(u"/Users/tester/Library/Caches/AudioUnitCache/one", "x");
    m_root.addFile(u"/Library/Caches/com.apple.audiounits.cache", "x");
    const QString path = u"/Library/Audio/Plug-Ins/Components/Bar.component"_s;
    m_root.addBundle(path);
    toggle(record(path, PluginFormat::au));
    EXPECT_EQ(m_root.names(u"/Users/tester/Library/Caches/AudioUnitCache"), QStringList());
    EXPECT_FALSE(m_root.exists(u"/Library/Caches/com.apple.audiounits.cache"));
    EXPECT_EQ(toggleError(record(path, PluginFormat::au)), QString()) << "the next scan corrects the row";
}

TEST_F(PluginMoverTest, OutcomesOfScriptsBecomeErrors)
{
    const platform::ScriptErrorDictionary cancelled = platform::scriptError(u"User canceled."_s, -128);
    const platform::ScriptErrorDictionary nameless{{u"X"_s, u"y"_s}};
    const QString denied = u"Permission denied: "_s;
    const QString whole = denied + platform::description(cancelled);
    const QString noToggle = u"Unknown error: Failed to execute AppleScript"_s;
    const QString noDeletion = u"Unknown error: Failed to delete plugins"_s;
    const struct {
        const char* title;
        platform::ScriptOutcome outcome;
        QString toggle;
        QString batch;
        QString deletion;
    } cases[] = {
        {"cancelled", {std::nullopt, cancelled}, whole, denied + u"User canceled."_s, whole},
        {"result and error", {QString(), cancelled}, whole, denied + u"User canceled."_s, whole},
        {"no message",
         {std::nullopt, nameless},
         denied + platform::description(nameless),
         denied + u"AppleScript error"_s,
         denied + platform::description(nameless)},
        {"empty dictionary",
         {std::nullopt, platform::ScriptErrorDictionary()},
         noToggle,
         denied + u"AppleScript error"_s,
         noDeletion},
        {"no script object", {}, noToggle, u""_s, noDeletion},
        {"result", {QString(), std::nullopt}, u""_s, u""_s, u""_s},
    };
    const AudioPlugin plugin = record(kVst3 + u"Foo.vst3"_s);
    for (const auto& each : cases) {
        SCOPED_TRACE(each.title);
        for (int i = 0; i < 3; ++i)
            m_system.scripts.answerNext(each.outcome);
        EXPECT_EQ(toggleError(plugin), each.toggle);
        EXPECT_EQ(batchError({plugin}), each.batch);
        EXPECT_EQ(deletionError({plugin}), each.deletion);
        EXPECT_EQ(temporaryFiles(), QStringList());
        EXPECT_FALSE(*m_mover->isRunningScript);
    }
}

TEST_F(PluginMoverTest, NamesThatWouldChangeTheScriptGoOnlyWithABatch)
{
    for (const QString& name : {u"It's"_s, u"a\"b"_s, u"a\\b"_s, u"a\\\\b"_s, u"a\\nb"_s, u"end\\"_s}) {
        SCOPED_TRACE(qPrintable(name));
        m_root.addFile(kVst3 + u"a\\b.vst3"_s, "bystander");
        const QString path = kVst3 + name + u".vst3"_s;
        m_root.addFile(path, "x");
        const Tree before = treeOf(m_root.path());
        EXPECT_TRUE(toggleError(record(path)).contains(u"-2741"_s));
        EXPECT_TRUE(deletionError({record(kVst3 + u"a.vst3"_s), record(path)}).contains(u"-2741"_s));
        EXPECT_EQ(difference(treeOf(m_root.path()), before), "");
        EXPECT_EQ(batchError({record(path)}), QString());
        EXPECT_EQ(m_root.content(kDisabledVst3 + name + u".vst3"_s), "x");
    }
}

TEST_F(PluginMoverTest, DeletesWhatWasConfirmedAndNothingElse)
{
    for (const QString& bystander : {u"a"_s, u"b"_s, u"a\\b"_s, u"canaries"_s, u"-"_s, u"x"_s})
        m_root.addFile(kVst3 + bystander, "bystander");
    AudioPlugins confirmed;
    AudioPlugins refused;
    const QStringList names = hostileNames();
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString path = kVst3 + QString::number(i % 9) + u'/' + names[i];
        m_root.addFile(i % 4 == 0 ? path + u"/Contents/file"_s : path, "x");
        AudioPlugin plugin = record(path);
        plugin.originalPath = m_root.at(kVst3 + u"a"_s); // plays no part
        const bool fits = !QRegularExpression(u"['\"\\\\]"_s).match(names[i]).hasMatch();
        (fits ? confirmed : refused).push_back(std::move(plugin));
    }
    ASSERT_TRUE(confirmed.size() > 100 && refused.size() > 100);
    Tree wanted = treeOf(m_root.path());
    for (const AudioPlugin& each : refused)
        EXPECT_NE(deletionError({confirmed[0], each}), QString()) << qPrintable(each.name);
    EXPECT_EQ(difference(treeOf(m_root.path()), wanted), "");

    for (const AudioPlugin& each : confirmed)
        takeOut(wanted, each.currentPath.toStdString());
    EXPECT_EQ(deletionError(confirmed), QString());
    EXPECT_EQ(difference(treeOf(m_root.path()), wanted), "");
    // Far more than an argument of a program can hold. Those that are gone by now are no failure.
    for (int i = 0; i < 2'500; ++i) {
        const QString path = u"/Library/Audio/Plug-Ins/VST/%1.vst"_s.arg(i, 40, 10, QChar(u'0'));
        m_root.addFile(path);
        confirmed.push_back(record(path, PluginFormat::vst2));
    }
    EXPECT_EQ(deletionError(confirmed), QString());
    EXPECT_EQ(m_root.names(u"/Library/Audio/Plug-Ins/VST"), QStringList());
    EXPECT_TRUE(m_root.exists(kVst3 + u"canaries"_s));
    EXPECT_EQ(deletionError({}), QString());
    EXPECT_EQ(m_system.scripts.sources.last(), u"do shell script \"\" with administrator privileges"_s);
}

TEST_F(PluginMoverTest, EnablingAUsersPluginReplacesItsPathOrChangesNothing)
{
    const QString path = kUserVst3 + u"Foo.vst3"_s;
    AudioPlugin off = record(path);
    off.isEnabled = false;
    off.currentPath = m_root.at(kDisabledVst3 + u"Foo.vst3"_s);
    m_root.addFile(kDisabledVst3 + u"Foo.vst3"_s, "old");
    m_root.addFile(path, "occupant");
    toggle(off);
    EXPECT_EQ(m_root.content(path), "old");
    EXPECT_EQ(m_root.names(kUserVst3), QStringList{u"Foo.vst3"_s});

    EXPECT_TRUE(toggleError(off).startsWith(u"File: No such file"_s)) << "the plugin is gone";
    EXPECT_EQ(m_root.content(path), "old") << "its occupant is not";

    // An occupant that cannot be deleted: its content is another user's.
    m_system.files.remove(m_root.at(path));
    m_root.addFile(path + u"/Contents/file"_s, "occupant");
    m_root.addFile(kDisabledVst3 + u"Foo.vst3"_s, "new");
    for (const QString& folder : {QString(), kUserVst3, kDisabledVst3})
        ASSERT_EQ(::chmod(m_root.at(folder).toUtf8().constData(), 0777), 0);
    const Tree before = treeOf(m_root.path());
    {
        const OtherUser user;
        EXPECT_TRUE(toggleError(off).startsWith(u"File: Permission denied"_s));
    }
    EXPECT_EQ(difference(treeOf(m_root.path()), before), "");

    m_system.files.remove(m_root.at(kDisabledVst3));
    EXPECT_TRUE(toggleError(record(path)).startsWith(u"File: No such file"_s))
        << "the route without rights creates no folder";
}

TEST_F(PluginMoverTest, BatchFilesArePrivateAndGoWithTheScript)
{
    m_root.addFile(kVst3 + u"A.vst3"_s, "A");
    QStringList waiting;
    m_system.scripts.whileRunning = [&] {
        waiting = temporaryFiles();
        for (const QString& name : waiting) {
            struct stat status {};
            ::stat((m_system.layout.temporary + u'/' + name).toUtf8().constData(), &status);
            EXPECT_EQ(status.st_mode & 07777, 0600U) << qPrintable(name);
        }
    };
    toggleAll({record(kVst3 + u"A.vst3"_s)});
    ASSERT_EQ(waiting.size(), 2);
    const auto match =
        QRegularExpression(u"^orvanlite_batch_([0-9A-F]{8}-(?:[0-9A-F]{4}-){3}[0-9A-F]{12})\\.sh$"_s)
            .match(waiting[0]);
    EXPECT_TRUE(match.hasMatch()) << qPrintable(waiting[0]);
    EXPECT_EQ(waiting[1], u"orvanlite_progress_"_s + match.captured(1) + u".txt"_s);
    EXPECT_EQ(m_system.scripts.sources,
              QStringList{batchAppleScript(m_system.layout.temporary + u'/' + waiting[0])});
    EXPECT_EQ(temporaryFiles(), QStringList());

    m_system.clock.advance(std::chrono::seconds(1)); // ends the last look at the counter
    // Nobody waits for the batch any more, and the mover has no owner.
    detach(keep(m_mover->toggleAll({m_allChanged[0]}, nullptr), &m_allChanged));
    const std::weak_ptr<PluginMover> left = m_mover;
    m_mover.reset();
    ASSERT_EQ(temporaryFiles().size(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return temporaryFiles().isEmpty() && left.expired(); }));
    EXPECT_EQ(m_root.content(kVst3 + u"A.vst3"_s), "A");
}

TEST_F(PluginMoverTest, IsRunningUntilTheLastOverlappingScriptHasEnded)
{
    for (const QString& name : {u"A.vst3"_s, u"B.vst3"_s})
        m_root.addFile(kVst3 + name, "x");
    standIn(u"mv"_s, "until [ -e \"$temporary/go${2##*/}\" ]; do sleep 0.01; done; exec /bin/mv \"$@\"\n");
    QObject context;
    QList<bool> seen;
    m_mover->isRunningScript.observe(&context, [&] { seen.append(*m_mover->isRunningScript); });
    AudioPlugin second;
    detach(keep(m_mover->toggle(record(kVst3 + u"A.vst3"_s)), &m_changed));
    detach(keep(m_mover->toggle(record(kVst3 + u"B.vst3"_s)), &second));
    const auto go = [this](const QString& name) {
        m_system.files.write(m_system.layout.temporary + u"/go"_s + name, "", platform::WriteMode::inPlace);
    };
    go(u"B.vst3"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !second.currentPath.isEmpty(); }));
    EXPECT_EQ(seen, QList<bool>{true});
    go(u"A.vst3"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_changed.currentPath.isEmpty(); }));
    EXPECT_EQ(seen, (QList<bool>{true, false}));
}

} // namespace orvanlite::test
