#include "OperationsFixture.h"

namespace orvanlite::test {

class TogglePluginTest : public OperationsTest {
protected:
    void toggle(const QString& name) { runTask(model().togglePlugin(row(name))); }
    /// Puts the root in front of the absolute paths of an expected command.
    [[nodiscard]] QString onRoot(QString command) const
    {
        for (const QString& top : {u"/Library"_s, u"/Applications"_s})
            command.replace(u'\'' + top, u'\'' + m_root.path() + top);
        return command;
    }
};

TEST_F(TogglePluginTest, MovesFileRowAndLogTogetherThereAndBack)
{
    const struct {
        QString title;
        QString place;
        QString disabledPlace;
        bool asksForRights;
    } cases[] = {
        {u"vst3"_s, u"/Library/Audio/Plug-Ins/VST3/Maker/Foo.vst3"_s,
         u"/Library/Audio/Plug-Ins/Disabled/VST3/Foo.vst3"_s, true},
        {u"au"_s, u"/Library/Audio/Plug-Ins/Components/Foo.component"_s,
         u"/Library/Audio/Plug-Ins/Disabled/Audio Units/Foo.component"_s, true},
        {u"aax"_s, u"/Library/Application Support/Avid/Audio/Plug-Ins/Foo.aaxplugin"_s,
         u"/Library/Application Support/Avid/Audio/Plug-Ins (Unused)/Foo.aaxplugin"_s, true},
        {u"user's vst"_s, u"/Users/tester/Library/Audio/Plug-Ins/VST/Foo.vst"_s,
         u"/Library/Audio/Plug-Ins/Disabled/VST/Foo.vst"_s, false},
        {u"user's au"_s, u"/Users/tester/Library/Audio/Plug-Ins/Components/Foo.component"_s,
         u"/Library/Audio/Plug-Ins/Disabled/Audio Units/Foo.component"_s, false},
        {u"waves"_s, u"/Applications/Waves/Plug-Ins V14/Foo.bundle"_s,
         u"/Applications/Waves/Plug-Ins V14/Disabled/Foo.bundle"_s, true},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(qPrintable(each.title));
        m_root.addBundle(each.place);
        scan();
        m_system.scripts.sources.clear();
        m_log.clear();
        const int enabledBefore = *model().dbEnabledCount;

        toggle(u"Foo"_s);
        EXPECT_FALSE(model().error->has_value());
        EXPECT_FALSE(m_root.exists(each.place));
        EXPECT_TRUE(m_root.exists(each.disabledPlace));
        EXPECT_FALSE(row(u"Foo"_s).isEnabled);
        EXPECT_EQ(row(u"Foo"_s).currentPath, m_root.at(each.disabledPlace));
        EXPECT_EQ(row(u"Foo"_s).originalPath, m_root.at(each.place));
        EXPECT_EQ(*model().dbEnabledCount, enabledBefore - 1);
        EXPECT_EQ(m_system.scripts.sources.size(), each.asksForRights ? 1 : 0);

        toggle(u"Foo"_s);
        EXPECT_TRUE(m_root.exists(each.place));
        EXPECT_FALSE(m_root.exists(each.disabledPlace));
        EXPECT_TRUE(row(u"Foo"_s).isEnabled);
        EXPECT_EQ(row(u"Foo"_s).currentPath, m_root.at(each.place));
        ASSERT_EQ(m_log.entries->size(), 2U);
        EXPECT_EQ((*m_log.entries)[0].action, ActivityAction::enabled);
        EXPECT_EQ((*m_log.entries)[1].action, ActivityAction::disabled);
        EXPECT_EQ((*m_log.entries)[1].pluginName, u"Foo"_s);
        EXPECT_EQ((*m_log.entries)[1].format, rawValue(row(u"Foo"_s).format));
        m_system.files.remove(m_root.at(each.place));
    }
}

TEST_F(TogglePluginTest, AsksForRightsWithTheExactCommand)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Foo.vst3");
    m_root.addBundle(u"/Library/Audio/Plug-Ins/Components/Bar.component");
    scan();
    toggle(u"Foo"_s);
    toggle(u"Foo"_s);
    toggle(u"Bar"_s);
    const QString flush =
        u" && rm -rf ~/Library/Caches/AudioUnitCache/* '/Library/Caches/com.apple.audiounits.cache'"
        " 2>/dev/null && killall -9 AudioComponentRegistrar 2>/dev/null; true"_s;
    const QStringList commands{
        u"mkdir -p '/Library/Audio/Plug-Ins/Disabled/VST3' && mv '/Library/Audio/Plug-Ins/VST3/Foo.vst3' "
        "'/Library/Audio/Plug-Ins/Disabled/VST3/Foo.vst3'"_s,
        u"mv '/Library/Audio/Plug-Ins/Disabled/VST3/Foo.vst3' '/Library/Audio/Plug-Ins/VST3/Foo.vst3'"_s,
        u"mkdir -p '/Library/Audio/Plug-Ins/Disabled/Audio Units' && mv "
        "'/Library/Audio/Plug-Ins/Components/Bar.component' "
        "'/Library/Audio/Plug-Ins/Disabled/Audio Units/Bar.component'"_s +
            flush};
    ASSERT_EQ(m_system.scripts.sources.size(), commands.size());
    for (qsizetype i = 0; i < commands.size(); ++i) {
        EXPECT_EQ(m_system.scripts.sources[i],
                  u"do shell script \""_s + onRoot(commands[i]) + u"\" with administrator privileges"_s);
    }
}

TEST_F(TogglePluginTest, FlushesTheAudioUnitCaches)
{
    m_root.addFile(u"/Users/tester/Library/Caches/AudioUnitCache/one", "x");
    m_root.addFile(u"/Library/Caches/com.apple.audiounits.cache", "x");
    m_root.addBundle(u"/Library/Audio/Plug-Ins/Components/Bar.component");
    scan();
    toggle(u"Bar"_s);
    EXPECT_EQ(m_root.names(u"/Users/tester/Library/Caches/AudioUnitCache"), QStringList());
    EXPECT_FALSE(m_root.exists(u"/Library/Caches/com.apple.audiounits.cache"));
}

TEST_F(TogglePluginTest, FindsAFreeNameAndReturnsToTheOldOne)
{
    const QString disabled = u"/Library/Audio/Plug-Ins/Disabled/Audio Units/"_s;
    m_root.addBundle(u"/Library/Audio/Plug-Ins/Components/Foo.component");
    scan();
    const AudioPlugin foo = row(u"Foo"_s);
    m_root.addBundle(disabled + u"Foo.component"_s);
    m_root.addBundle(disabled + u"Foo 1.component"_s);
    runTask(model().togglePlugin(foo));
    EXPECT_EQ(row(u"Foo"_s).currentPath, m_root.at(disabled + u"Foo 2.component"_s));
    EXPECT_TRUE(m_root.exists(disabled + u"Foo 2.component"_s));
    toggle(u"Foo"_s);
    EXPECT_TRUE(m_root.exists(u"/Library/Audio/Plug-Ins/Components/Foo.component"));
    EXPECT_FALSE(m_root.exists(disabled + u"Foo 2.component"_s));
}

TEST_F(TogglePluginTest, LeavesEverythingAsItWasWhenItFails)
{
    platform::ScriptOutcome silent;
    const struct {
        QString title;
        QString place;
        std::function<void()> arrange;
        PluginError::Kind kind;
        QString payloadPart;
    } cases[] = {
        {u"cancelled prompt"_s, u"/Library/Audio/Plug-Ins/VST3/Foo.vst3"_s,
         [this] { m_system.scripts.failNext(u"User canceled."_s); }, PluginError::Kind::permissionDenied,
         u"NSAppleScriptErrorMessage = \"User canceled.\";"_s},
        {u"no answer at all"_s, u"/Library/Audio/Plug-Ins/VST3/Foo.vst3"_s,
         [&] { m_system.scripts.answerNext(silent); }, PluginError::Kind::unknownError,
         u"Failed to execute AppleScript"_s},
        {u"an apostrophe does not compile"_s, u"/Library/Audio/Plug-Ins/VST3/O'Neil/Foo.vst3"_s, [] {},
         PluginError::Kind::permissionDenied, u"NSAppleScriptErrorNumber"_s},
        {u"file gone"_s, u"/Library/Audio/Plug-Ins/VST3/Foo.vst3"_s,
         [this] { m_system.files.remove(m_root.at(u"/Library/Audio/Plug-Ins/VST3/Foo.vst3")); },
         PluginError::Kind::permissionDenied, u"No such file or directory"_s},
        {u"no disabled folder on the plain road"_s, u"/Users/tester/Library/Audio/Plug-Ins/VST3/Foo.vst3"_s,
         [this] { m_system.files.remove(m_root.at(u"/Library/Audio/Plug-Ins/Disabled/VST3")); },
         PluginError::Kind::unknownError, u"No such file or directory"_s},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(qPrintable(each.title));
        m_root.addBundle(each.place);
        scan();
        const AudioPlugin before = row(u"Foo"_s);
        each.arrange();
        const bool stood = m_root.exists(each.place);
        const int posts = countPosts();
        runTask(model().togglePlugin(before));
        ASSERT_TRUE(model().error->has_value());
        EXPECT_EQ((*model().error)->kind(), each.kind);
        EXPECT_TRUE((*model().error)->payload().contains(each.payloadPart))
            << qPrintable((*model().error)->payload());
        EXPECT_EQ(m_root.exists(each.place), stood);
        EXPECT_EQ(row(u"Foo"_s), before);
        EXPECT_TRUE(m_log.entries->empty());
        EXPECT_EQ(countPosts(), posts) << "nothing is reloaded";
        EXPECT_FALSE(*model().isRunningScript);
        if (stood)
            m_system.files.remove(m_root.at(each.place));
    }
}

TEST_F(TogglePluginTest, DoesNotNoticeAFailedMoveOfASystemAudioUnit)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/Components/Foo.component");
    scan();
    const AudioPlugin foo = row(u"Foo"_s);
    m_system.files.remove(m_root.at(u"/Library/Audio/Plug-Ins/Components/Foo.component"));
    runTask(model().togglePlugin(foo));
    EXPECT_FALSE(model().error->has_value());
    EXPECT_FALSE(row(u"Foo"_s).isEnabled) << "the next scan brings the row back in line";
}

TEST_F(TogglePluginTest, ReplacesWhatStandsInThePlaceOfAUsersPlugin)
{
    const QString place = u"/Users/tester/Library/Audio/Plug-Ins/VST3/Foo.vst3"_s;
    m_root.addFile(place, "old");
    scan();
    toggle(u"Foo"_s);
    m_root.addFile(place, "new");
    toggle(u"Foo"_s);
    EXPECT_EQ(m_root.content(place), "old");
}

TEST_F(TogglePluginTest, TellsWhileThePromptIsOpen)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Foo.vst3");
    scan();
    QList<bool> seen;
    m_system.scripts.whileRunning = [&] { seen.append(*model().isRunningScript); };
    model().isRunningScript.observe(&model(), [&] { seen.append(*model().isRunningScript); });
    toggle(u"Foo"_s);
    EXPECT_EQ(seen, (QList<bool>{true, true, false}));
}

TEST_F(TogglePluginTest, RegistersWavesAudioUnitsAfterEnablingOnly)
{
    m_root.addBundle(u"/Applications/Waves/Plug-Ins V14/Foo.bundle");
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.app");
    m_root.addFolder(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.txt");
    m_root.addFolder(u"/Applications/Waves/WaveShells V15");
    m_root.addFolder(u"/Applications/Waves/waveshells V16/Waves AU Reg Utility.app");
    scan();
    toggle(u"Foo"_s);
    EXPECT_TRUE(m_system.processes.starts.empty());
    toggle(u"Foo"_s);
    const QString utility = m_root.at(u"/Applications/Waves/WaveShells V14/Waves AU Reg Utility 14.app");
    const std::vector<RecordingLauncher::Start> wanted{
        {m_root.at(u"/usr/bin/open"), {u"-a"_s, utility, u"--args"_s, u"--silent"_s}}};
    EXPECT_EQ(m_system.processes.starts, wanted);

    m_system.processes.fails = true;
    toggle(u"Foo"_s);
    toggle(u"Foo"_s);
    EXPECT_FALSE(model().error->has_value()) << "a failed start is no failed toggle";
}

} // namespace orvanlite::test
