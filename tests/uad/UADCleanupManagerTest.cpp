#include "uad/UADCleanupManager.h"

#include "operations/OperationsFixture.h"

#include <gmock/gmock.h>

namespace orvanlite::test {

class UADCleanupManagerTest : public OperationsTest {
protected:
    UADCleanupManagerTest()
    {
        for (const QString& file : {u"VST3/UAD Neve 1073.vst3"_s, u"VST/UAD Neve 1073.vst"_s,
                                    u"Components/UAD Neve 1073(m).component"_s, u"VST3/UAD API 2500.vst3"_s,
                                    u"Disabled/VST3/UAD Pultec.vst3"_s, u"VST3/UAD Studer A800.vst3"_s})
            m_root.addFile(u"/Library/Audio/Plug-Ins/"_s + file, "code");
    }
    UADCleanupManager& manager()
    {
        m_manager->pluginManager = &model();
        return *m_manager;
    }
    std::string start() ///< returns the console output
    {
        return printedBy([this] { manager().startCleanup(); });
    }
    void retry()
    {
        manager().retryWithExistingProfile();
        EXPECT_TRUE(*manager().isLoading);
        turnEventLoop();
        EXPECT_FALSE(*manager().isLoading);
    }
    void disable()
    {
        runTask(manager().disableSelectedUADDemos());
        EXPECT_FALSE(*manager().isLoading);
    }
    /// One letter per demo: x selected, o already disabled, - neither.
    QString demos()
    {
        QString all;
        for (const UADPluginAuth& each : *manager().demoPlugins)
            all += each.isSelected ? u'x' : each.isAlreadyDisabled ? u'o' : u'-';
        return all;
    }
    QString message() { return manager().errorMessage->value_or(QString()); }

    const QByteArray m_profile = "UAD-2 Plug-in Authorizations\nUAD Neve 1073: Demo expired\n"
                                 "UAD Studer A800: Authorized\nUAD Pultec: Demo expired\n"
                                 "UAD API 2500: Demo (3 days left)\nUAD Moog: Demo not started\n";
    std::optional<UADCleanupManager> m_manager{std::in_place, m_system.platform, m_database};
};

TEST_F(UADCleanupManagerTest, DisablesTheSelectedDemosOfAnExportedProfile)
{
    m_root.addFile(u"/Users/tester/Desktop/UADSystemProfile.txt", "UAD A: Authorized"); // without a section
    start();
    EXPECT_TRUE(message().startsWith(u"UAD Meter & Control Panel not found."_s));
    EXPECT_TRUE(*manager().showCleanupSheet && !*manager().isLoading && demos().isEmpty());
    retry();
    EXPECT_EQ(message(), u"All your UAD plugins are authorized! Nothing to clean up."_s);

    m_root.addFile(u"/Users/tester/Desktop/UADSystemProfile.txt", m_profile);
    retry();
    EXPECT_EQ(message(), QString());
    EXPECT_EQ(demos(), u"xoxx"_s);
    EXPECT_EQ(manager().authorizedPlugins->size(), 1U);
    manager().selectExpiredOnly();
    EXPECT_EQ(demos(), u"xo--"_s);
    manager().toggleSelection(manager().demoPlugins->at(1).id);
    disable();
    EXPECT_EQ(m_system.scripts.sources.size(), 1); // one request for rights
    EXPECT_TRUE(*manager().cleanupComplete);
    EXPECT_EQ(*manager().disabledCount, 4); // files, with the one that was off already
    const QString after = u"UAD API 2500 Enabled UAD Neve 1073 Disabled UAD Neve 1073 Disabled "
                          "UAD Neve 1073(m) Disabled UAD Pultec Disabled UAD Studer A800 Enabled"_s;
    EXPECT_EQ(states().join(u' '), after);
    start(); // with a scan: the disk says the same
    EXPECT_EQ(states().join(u' '), after);
    EXPECT_TRUE(demos().isEmpty() && manager().authorizedPlugins->empty() && !*manager().cleanupComplete);
    retry();
    manager().deselectAll();
    manager().selectAll();
    EXPECT_EQ(demos(), u"ooxx"_s);
    disable();
    EXPECT_EQ(*manager().disabledCount, 1);
    m_root.addFile(u"/Users/tester/Desktop/UADSystemProfile.txt",
                   QByteArray(m_profile).replace("UAD Moog:", "-"));
    retry();
    EXPECT_EQ(message(), u"All demo plugins are already disabled. Nothing new to clean up."_s);
    EXPECT_EQ(demos(), u"ooo"_s);
}

TEST_F(UADCleanupManagerTest, LetsTheControlPanelWriteTheProfile)
{
    m_root.addFolder(u"/Applications/Universal Audio/UAD Meter & Control Panel.app");
    m_root.addFile(u"/Users/tester/Desktop/UADSystemProfile.txt", "stale");
    m_system.scripts.failNext(u"no such application"_s);
    m_system.scripts.answerNext({QString(), std::nullopt});
    m_system.scripts.whileRunning = [this] { EXPECT_TRUE(m_root.names(u"/Users/tester/Desktop").isEmpty()); };
    EXPECT_THAT(start(), testing::ContainsRegex("AppleScript error opening UAD: (.|\n)*no such application"));
    ASSERT_EQ(m_system.scripts.sources.size(), 2);
    EXPECT_TRUE(m_system.scripts.sources[0].endsWith(u"\n    end tell\nend tell\ndelay 1.5"_s));
    EXPECT_TRUE(m_system.scripts.sources[1].contains(u"size of frontWindow\n        \n        -- The "_s));
    m_root.addFile(u"/Users/tester/Documents/UADSystemProfile.txt", "not the first place");
    m_root.addFile(u"/Users/tester/Downloads/UADSystemProfile 2.txt", m_profile);
    m_system.clock.advance(std::chrono::seconds(1));
    EXPECT_FALSE(*manager().isLoading);
    EXPECT_EQ(demos().size(), 4);

    // A second start supersedes the first one.
    m_system.scripts.whileRunning = nullptr;
    for (int i = 0; i < 6; ++i)
        m_system.scripts.answerNext({QString(), std::nullopt});
    start();
    QDir(m_root.at(u"/Users/tester")).removeRecursively();
    m_system.clock.advance(std::chrono::milliseconds(500));
    start();
    m_system.clock.advance(std::chrono::milliseconds(500));
    EXPECT_TRUE(*manager().isLoading && message().isEmpty());
    m_system.clock.advance(std::chrono::milliseconds(500));
    EXPECT_TRUE(message().startsWith(u"Please save the UAD System Profile manually:\n\n1. In "_s));
    EXPECT_FALSE(*manager().isLoading);

    start(); // the application may quit while a run waits
    m_manager.reset();
    m_system.clock.advance(std::chrono::seconds(1));
}

TEST_F(UADCleanupManagerTest, ReportsWhyNothingWasDone)
{
    retry();
    EXPECT_TRUE(message().startsWith(u"No UADSystemProfile.txt found. Please export it "_s));
    m_root.addFolder(u"/Users/tester/Documents/UADSystemProfile.txt");
    retry();
    EXPECT_TRUE(message().startsWith(u"Failed to read UAD System Profile: Is a directory: "_s));

    // The catalogue is still empty; disabling scans first.
    manager().parseAndCrossReference(u"Plug-in Authorizations\nUAD Neve 1073: demo 4\nUAD Moog: expired\n"_s);
    EXPECT_EQ(demos(), u"xx"_s);
    manager().selectExpiredOnly();
    disable();
    EXPECT_EQ(message(),
              u"The selected plugins are already disabled or could not be matched to installed files."_s);
    EXPECT_FALSE(*manager().cleanupComplete);
    manager().selectAll();
    disable();
    EXPECT_EQ(*manager().disabledCount, 3);

    QDir(m_root.at(u"/Library")).removeRecursively();
    m_database.replaceAllPlugins({});
    disable();
    EXPECT_EQ(message(),
              u"No UAD plugins found on this system. Make sure UAD software is installed and plugins are "
              "present in /Library/Audio/Plug-Ins."_s);
}

} // namespace orvanlite::test
