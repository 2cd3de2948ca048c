#include "operations/PluginMover.h"

#include "HostileTree.h"
#include "OperationsFixture.h"
#include "operations/Detach.h"
#include "platform/Path.h"

#include <QRegularExpression>
#include <QTest>
#include <QTimer>

namespace orvanlite::test {

namespace {

const QString kVst3 = u"/Library/Audio/Plug-Ins/VST3/"_s;
const QString kDisabledVst3 = u"/Library/Audio/Plug-Ins/Disabled/VST3/"_s;
const QString kUserVst3 = u"/Users/tester"_s + kVst3;

} // namespace

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
    AudioPlugin toggle(AudioPlugin plugin) { return resultOf(m_mover->toggle(std::move(plugin))); }
    AudioPlugins toggleAll(AudioPlugins plugins)
    {
        return resultOf(m_mover->toggleAll(std::move(plugins), &m_progress));
    }
    static QString errorOf(const std::function<void()>& act)
    {
        try {
            act();
        } catch (const PluginError& error) {
            return error.errorDescription();
        } catch (const platform::FileError& error) {
            return u"File: "_s + error.message;
        }
        return {};
    }
    QString toggleError(const AudioPlugin& plugin)
    {
        return errorOf([&] { toggle(plugin); });
    }
    QString batchError(const AudioPlugins& plugins)
    {
        return errorOf([&] { toggleAll(plugins); });
    }
    QString deletionError(const AudioPlugins& plugins)
    {
        return errorOf([&] { runTask(m_mover->remove(plugins)); });
    }

    std::shared_ptr<PluginMover> m_mover = std::make_shared<PluginMover>(m_system.platform);
};

TEST_F(PluginMoverTest, UsesTheFolderAndTheScriptOfEachFormat)
{
    const QString components = u"/Library/Audio/Plug-Ins/Components/"_s;
    const QString disabled = u"/Library/Audio/Plug-Ins/Disabled/"_s;
    const QString avid = u"/Library/Application Support/Avid/Audio/Plug-Ins"_s;
    const QString waves = u"/Applications/Waves/Plug-Ins V14/"_s;
    const QString units = disabled + u"Audio Units/"_s;
    const QString user = u"/Users/tester/Library/Audio/Plug-Ins/"_s;
    const std::tuple<PluginFormat, QString, QString> cases[] = {
        {PluginFormat::vst3, kVst3 + u"Acme/Foo.vst3"_s, disabled + u"VST3/Foo.vst3"_s},
        {PluginFormat::au, components + u"Foo.component"_s, units + u"Foo.component"_s},
        {PluginFormat::aax, avid + u"/Foo.aaxplugin"_s, avid + u" (Unused)/Foo.aaxplugin"_s},
        {PluginFormat::wavesBundle, waves + u"Foo.bundle"_s, waves + u"Disabled/Foo.bundle"_s},
        {PluginFormat::vst2, user + u"VST/Foo.vst"_s, disabled + u"VST/Foo.vst"_s},
        {PluginFormat::au, user + u"Components/Foo.component"_s, units + u"Foo.component"_s},
        {PluginFormat::clap, user + u"CLAP/Foo"_s, disabled + u"CLAP/Foo"_s},
    };
    const QString caches[] = {u"/Users/tester/Library/Caches/AudioUnitCache/one"_s,
                              u"/Library/Caches/com.apple.audiounits.cache"_s};
    for (const auto& [format, path, disabledPath] : cases) {
        SCOPED_TRACE(qPrintable(path));
        const AudioPlugin plugin = record(path, format);
        const bool hasScript = !path.startsWith(user);
        for (const bool isBatch : {false, true}) {
            SCOPED_TRACE(isBatch);
            m_root.addBundle(path, "x");
            if (!hasScript)
                m_root.addFolder(platform::parentFolder(disabledPath));
            for (const QString& cache : caches)
                m_root.addFile(cache);
            m_system.scripts.sources.clear();
            const AudioPlugin off = isBatch ? toggleAll({plugin}).at(0) : toggle(plugin);
            EXPECT_EQ(off.currentPath, m_root.at(disabledPath));
            EXPECT_EQ(off.originalPath, plugin.originalPath);
            EXPECT_FALSE(off.isEnabled);
            EXPECT_TRUE(!m_root.exists(path) && m_root.exists(disabledPath));
            for (const QString& cache : caches)
                EXPECT_EQ(m_root.exists(cache), isBatch || !path.startsWith(components));
            const AudioPlugin on = isBatch ? toggleAll({off}).at(0) : toggle(off);
            EXPECT_EQ(on, plugin);
            EXPECT_TRUE(m_root.exists(path) && !m_root.exists(disabledPath));
            EXPECT_EQ(m_system.scripts.sources.size(), isBatch || hasScript ? 2 : 0);
        }
    }
    // On purpose a failed move before the flush goes unnoticed; the next scan corrects the row.
    EXPECT_EQ(toggleError(record(components + u"Missing.component"_s, PluginFormat::au)), QString());
}

TEST_F(PluginMoverTest, FindsAFreeNameAndRestoresTheOriginalOne)
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
    // A batch chooses all names before it moves anything, so two of the same name collide.
    m_root.addFile(kVst3 + u"One/Same.vst3"_s, "one");
    m_root.addFile(kVst3 + u"Two/Same.vst3"_s, "two");
    m_root.addFile(kDisabledVst3 + u"Same.vst3"_s, "old");
    for (const AudioPlugin& each :
         toggleAll({record(kVst3 + u"One/Same.vst3"_s), record(kVst3 + u"Two/Same.vst3"_s)}))
        EXPECT_EQ(each.currentPath, m_root.at(kDisabledVst3 + u"Same 1.vst3"_s));
    EXPECT_EQ(m_root.content(kDisabledVst3 + u"Same.vst3"_s), "old");
    EXPECT_EQ(m_root.content(kDisabledVst3 + u"Same 1.vst3"_s), "two");
}

TEST_F(PluginMoverTest, OutcomesOfScriptsBecomeErrors)
{
    const platform::ScriptErrorDictionary cancelled = platform::scriptError(u"User canceled."_s, -128);
    const platform::ScriptErrorDictionary nameless{{u"X"_s, u"y"_s}};
    const QString denied = u"Permission denied: "_s;
    const QString whole = denied + platform::description(cancelled);
    const QString namelessText = denied + platform::description(nameless);
    const QString noToggle = u"Unknown error: Failed to execute AppleScript"_s;
    const QString noDeletion = u"Unknown error: Failed to delete plugins"_s;
    const QString noMessage = denied + u"AppleScript error"_s;
    const platform::ScriptErrorDictionary empty;
    // The errors of a toggle, a batch and a deletion.
    const std::tuple<const char*, platform::ScriptOutcome, QString, QString, QString> cases[] = {
        {"cancelled", {std::nullopt, cancelled}, whole, denied + u"User canceled."_s, whole},
        {"result and error", {QString(), cancelled}, whole, denied + u"User canceled."_s, whole},
        {"no message", {std::nullopt, nameless}, namelessText, noMessage, namelessText},
        {"empty dictionary", {std::nullopt, empty}, noToggle, noMessage, noDeletion},
        {"no script object", {}, noToggle, {}, noDeletion},
        {"result", {QString(), std::nullopt}, {}, {}, {}},
    };
    const AudioPlugin plugin = record(kVst3 + u"Foo.vst3"_s);
    for (const auto& [title, outcome, toggleFailure, batchFailure, deletionFailure] : cases) {
        SCOPED_TRACE(title);
        for (int i = 0; i < 3; ++i)
            m_system.scripts.answerNext(outcome);
        EXPECT_EQ(toggleError(plugin), toggleFailure);
        EXPECT_EQ(batchError({plugin}), batchFailure);
        EXPECT_EQ(deletionError({plugin}), deletionFailure);
        EXPECT_EQ(temporaryFiles(), QStringList());
        EXPECT_FALSE(*m_mover->isRunningScript);
    }
}

TEST_F(PluginMoverTest, DeletesTheGivenPluginsAndNothingElse)
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
        plugin.originalPath = m_root.at(kVst3 + u"a"_s); // is ignored
        const bool fits = !QRegularExpression(u"['\"\\\\\\x{FFFD}]"_s).match(names[i]).hasMatch();
        (fits ? confirmed : refused).push_back(std::move(plugin));
    }
    ASSERT_TRUE(confirmed.size() > 100 && refused.size() > 100);
    Tree wanted = treeOf(m_root.path());
    for (const AudioPlugin& each : refused) {
        SCOPED_TRACE(qPrintable(each.name));
        EXPECT_TRUE(deletionError({confirmed[0], each}).contains(u"-2741"_s));
        EXPECT_TRUE(toggleError(each).contains(u"-2741"_s));
    }
    EXPECT_EQ(difference(treeOf(m_root.path()), wanted), "");

    for (const AudioPlugin& each : confirmed)
        takeFrom(wanted, each.currentPath);
    for (int i = 0; i < 2; ++i) // missing files are not an error
        EXPECT_EQ(deletionError(confirmed), QString());
    EXPECT_EQ(difference(treeOf(m_root.path()), wanted), "");
    EXPECT_EQ(deletionError({}), QString());
    EXPECT_EQ(m_system.scripts.sources.last(), u"do shell script \"\" with administrator privileges"_s);
}

TEST_F(PluginMoverTest, EnablingAUsersPluginReplacesAnExistingFileOrChangesNothing)
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

    EXPECT_TRUE(toggleError(off).startsWith(u"File: No such file"_s)) << "the plugin is missing";
    EXPECT_EQ(m_root.content(path), "old") << "the existing file is kept";

    // The existing bundle cannot be deleted entirely: a part of it belongs to another user.
    m_system.files.remove(m_root.at(path));
    m_root.addFile(path + u"/Contents/file"_s, "occupant");
    m_root.addFile(path + u"/own"_s, "occupant");
    m_root.addFile(kDisabledVst3 + u"Foo.vst3"_s, "new");
    for (const QString& folder : {QString(), kUserVst3, kDisabledVst3, path})
        m_root.setMode(folder, 0777);
    const Tree before = treeOf(m_root.path());
    {
        const WithoutRights denied;
        EXPECT_TRUE(toggleError(off).startsWith(u"File: Permission denied"_s));
    }
    EXPECT_EQ(difference(treeOf(m_root.path()), before), "");

    m_system.files.remove(m_root.at(kDisabledVst3));
    EXPECT_TRUE(toggleError(record(path)).startsWith(u"File: No such file"_s))
        << "a move without administrator rights creates no folder";
}

TEST_F(PluginMoverTest, BatchFilesArePrivateAndRemovedWithTheScript)
{
    m_root.addFile(kVst3 + u"A.vst3"_s, "A");
    QStringList waiting;
    m_system.scripts.whileRunning = [&] {
        waiting = temporaryFiles();
        for (const QString& name : waiting)
            EXPECT_EQ(statusOf(m_system.layout.temporary + u'/' + name).st_mode & 07777, 0600U);
    };
    AudioPlugins plugins = toggleAll({record(kVst3 + u"A.vst3"_s)});
    ASSERT_EQ(waiting.size(), 2);
    const auto match =
        QRegularExpression(u"^orvanlite_batch_([0-9A-F]{8}-(?:[0-9A-F]{4}-){3}[0-9A-F]{12})\\.sh$"_s)
            .match(waiting[0]);
    EXPECT_TRUE(match.hasMatch()) << qPrintable(waiting[0]);
    EXPECT_EQ(waiting[1], u"orvanlite_progress_"_s + match.captured(1) + u".txt"_s);
    EXPECT_EQ(m_system.scripts.sources,
              QStringList{batchAppleScript(m_system.layout.temporary + u'/' + waiting[0])});
    EXPECT_EQ(temporaryFiles(), QStringList());

    m_system.clock.advance(std::chrono::seconds(1)); // ends the polling
    // The batch is not awaited, the mover has no owner, and then the application quits.
    replaceTool(u"mv"_s, "while [ ! -e \"$temporary/go\" ]; do sleep 0.01; done; exec /bin/mv \"$@\"\n");
    detach(storeResult(m_mover->toggleAll(plugins, nullptr), &plugins));
    const std::weak_ptr<PluginMover> left = m_mover;
    m_mover.reset();
    ASSERT_EQ(temporaryFiles().size(), 2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_root.exists(u"/tools/calls"); }));
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    EXPECT_EQ(temporaryFiles(), QStringList());
    m_system.files.write(m_system.layout.temporary + u"/go"_s, "", platform::WriteMode::inPlace);
    EXPECT_TRUE(QTest::qWaitFor([&] { return left.expired(); })) << "the script runs to its end";
    EXPECT_EQ(m_root.content(kVst3 + u"A.vst3"_s), "A");
}

TEST_F(PluginMoverTest, IsRunningUntilTheLastOverlappingScriptHasEnded)
{
    for (const QString& name : {u"A.vst3"_s, u"B.vst3"_s})
        m_root.addFile(kVst3 + name, "x");
    replaceTool(u"mv"_s,
                "until [ -e \"$temporary/go${2##*/}\" ]; do sleep 0.01; done; exec /bin/mv \"$@\"\n");
    QObject context;
    QList<bool> seen;
    m_mover->isRunningScript.observe(&context, [&] { seen.append(*m_mover->isRunningScript); });
    std::map<QString, AudioPlugin> changed;
    for (const QString& name : {u"A.vst3"_s, u"B.vst3"_s})
        detach(storeResult(m_mover->toggle(record(kVst3 + name)), &changed[name]));
    const auto end = [&](const QString& name) {
        m_system.files.write(m_system.layout.temporary + u"/go"_s + name, "", platform::WriteMode::inPlace);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !changed[name].currentPath.isEmpty(); }));
    };
    end(u"B.vst3"_s);
    EXPECT_EQ(seen, QList<bool>{true});
    end(u"A.vst3"_s);
    EXPECT_EQ(seen, (QList<bool>{true, false}));
}

TEST_F(PluginMoverTest, RemovesOnlyWhatAFailedMoveHasCopied)
{
    const std::tuple<const char*, QByteArray, bool> rows[] = {
        {"a part", "mkdir -p \"$2/Contents\"; printf 12 >\"$2/Contents/a\"; ln -s a \"$2/Contents/link\"",
         false},
        {"all", "cp -R \"$1\" \"$2\"", false},
        {"a larger file", "mkdir -p \"$2/Contents\"; printf 1234 >\"$2/Contents/a\"", true},
        {"other content", "mkdir -p \"$2/Contents\"; printf 124 >\"$2/Contents/a\"", true},
        {"something else", "mkdir \"$2\"; : >\"$2/other\"", true},
        {"all, and the source is being removed", "cp -R \"$1\" \"$2\"; rm \"$1/Contents/a\"", true},
        {"all, and then the script was killed", "cp -R \"$1\" \"$2\"; kill -9 $PPID", true},
        {"moved, and installed again", "/bin/mv \"$1\" \"$2\"; cp -R \"$2\" \"$1\"", true},
    };
    const AudioPlugin plugin = record(kVst3 + u"A.vst3"_s);
    for (const auto& [title, lines, remains] : rows) {
        SCOPED_TRACE(title);
        m_root.addFile(kVst3 + u"A.vst3/Contents/a"_s, "123");
        ::symlink("a", m_root.at(kVst3 + u"A.vst3/Contents/link"_s).toUtf8().constData());
        replaceTool(u"mv"_s, lines + "; exit 1\n");
        batchError({plugin});
        EXPECT_EQ(m_root.exists(kDisabledVst3 + u"A.vst3"_s), remains);
        EXPECT_TRUE(m_root.exists(kVst3 + u"A.vst3"_s));
        m_root.addFile(kVst3 + u"A.vst3/Contents/a"_s, "123");
        toggleError(plugin);
        EXPECT_EQ(m_root.names(kDisabledVst3).size(), remains ? 2 : 0) << "the single move takes a free name";
        m_system.files.remove(m_root.at(u"/Library"));
    }
    // Two copies of the same content swap their places.
    AudioPlugin off = plugin;
    off.isEnabled = false;
    off.currentPath = m_root.at(kDisabledVst3 + u"A.vst3"_s);
    for (const QString& folder : {kVst3, kDisabledVst3})
        m_root.addFile(folder + u"A.vst3/Contents/a"_s, "123");
    replaceTool(u"mv"_s, "exec /bin/mv \"$@\"\n");
    toggleAll({plugin, off});
    EXPECT_EQ(m_root.names(kDisabledVst3), QStringList{u"A 1.vst3"_s});
    EXPECT_TRUE(m_root.exists(kVst3 + u"A.vst3/Contents/a"_s));
}

} // namespace orvanlite::test
