#include "FaultySystem.h"
#include "profiles/ProfileManager.h"
#include "records/ActivityLogManager.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

namespace {

/// The state files of one application folder and a table of all changes to them.
class InterruptedSavesTest : public testing::Test {
protected:
    struct Change {
        const char* name;
        std::function<void()> make;
    };

    InterruptedSavesTest()
    {
        profiles().saveProfile(u"First"_s, plugins(40));
        profiles().saveProfile(u"Second"_s, plugins(3));
        profiles().setPendingNewPlugins(plugins(20));
        log().logBatch(std::vector<LoggedPlugin>(30, {u"Echo"_s, u"VST3"_s}), ActivityAction::enabled);
        for (const QString& name : m_system.root.names(m_folder))
            m_before.emplace_back(m_folder + u'/' + name, m_system.root.content(m_folder + u'/' + name));
    }

    [[nodiscard]] ProfileManager profiles() const { return ProfileManager(m_system.platform); }
    [[nodiscard]] ActivityLogManager log() const { return ActivityLogManager(m_system.platform); }
    static AudioPlugins plugins(int count)
    {
        AudioPlugins all(static_cast<std::size_t>(count));
        for (AudioPlugin& each : all)
            each.name = u"Plugin %1"_s.arg(&each - all.data());
        return all;
    }
    void restore() const
    {
        for (const auto& [path, content] : m_before)
            m_system.root.addFile(path, content);
    }
    /// What the next start reads.
    [[nodiscard]] QString state() const
    {
        QString text;
        const ProfileManager manager = profiles();
        for (const PluginProfile& each : *manager.profiles)
            text += u"%1 %2 "_s.arg(each.name).arg(each.allPluginKeys.size());
        return text +
               u"pending %1 log %2"_s.arg(manager.pendingNewPluginKeys->size()).arg(log().entries->size());
    }

    /// They stay the same files, except for the pending ones: without any, their file is removed.
    [[nodiscard]] std::vector<ino_t> files() const
    {
        std::vector<ino_t> numbers;
        for (const auto& [path, content] : m_before)
            numbers.push_back(path.contains(u"pending"_s) ? 0 : statusOf(m_system.root.at(path)).st_ino);
        return numbers;
    }

    TestPlatform m_system;
    const QString m_folder =
        u"/"_s + m_system.layout.applicationFolder().sliced(m_system.root.path().size() + 1);
    std::vector<std::pair<QString, QByteArray>> m_before;
    const std::string m_files = m_system.layout.applicationFolder().toStdString();
    const std::vector<Change> m_changes{
        {"a profile more", [this] { profiles().saveProfile(u"Third"_s, plugins(60)); }},
        {"a profile less",
         [this] {
             ProfileManager manager = profiles();
             manager.deleteProfile(PluginProfile(manager.profiles->front()));
         }},
        {"more pending", [this] { profiles().setPendingNewPlugins(plugins(90)); }},
        {"fewer pending", [this] { profiles().setPendingNewPlugins(plugins(1)); }},
        {"none pending", [this] { profiles().clearPendingNewPlugins(); }},
        {"a longer log", [this] { log().log(u"Gate"_s, u"AAX"_s, ActivityAction::deleted); }},
        {"an empty log", [this] { log().clear(); }},
    };
};

} // namespace

TEST_F(InterruptedSavesTest, LeaveTheOldOrTheNewState)
{
    const QString before = state();
    const std::vector<ino_t> same = files();
    for (const Change& change : m_changes) {
        SCOPED_TRACE(change.name);
        restore();
        EXPECT_EQ(runWith({}, change.make), End::finished);
        const QString after = state();
        EXPECT_NE(after, before);
        EXPECT_EQ(files(), same);
        for (const auto& [error, isPartial] : {std::pair(0, false),
                                               {EIO, false},
                                               {EIO, true},
                                               {ENOSPC, false},
                                               {ENOSPC, true},
                                               {EOPNOTSUPP, true}}) {
            const int tried = forEachCall([&](int call) {
                restore();
                bool isReached = false;
                const End end = runWith({m_files, call, error, isPartial}, change.make, &isReached);
                EXPECT_EQ(end, error == 0 && isReached ? End::killed : End::finished);
                const QString found = state();
                EXPECT_TRUE(found == before || found == after)
                    << "errno " << error << " at call " << call << ": " << qPrintable(found);
                return isReached;
            });
            EXPECT_GE(tried, 1);
        }
    }
}

TEST_F(InterruptedSavesTest, FullDiskKeepsTheOldState)
{
    const QString before = state();
    for (const Change& change : m_changes) {
        SCOPED_TRACE(change.name);
        restore();
        EXPECT_EQ(runWith({}, change.make), End::finished);
        const QString after = state();
        for (rlim_t bytes = 0; bytes < 9000; bytes += 500) {
            restore();
            const auto onFullDisk = [&] {
                std::signal(SIGXFSZ, SIG_IGN);
                const rlimit limit{bytes, bytes};
                EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
                change.make();
            };
            EXPECT_EQ(runWith({}, onFullDisk), End::finished);
            const QString found = state();
            EXPECT_TRUE(found == before || found == after) << bytes << " bytes: " << qPrintable(found);
        }
    }
}

/// With ORV_FAULTS_KILLS=N: kills a process that saves all the time, at N random moments for each size of the
/// files.
TEST_F(InterruptedSavesTest, SurviveAKillAtAnyMoment)
{
    const int kills = qEnvironmentVariableIntValue("ORV_FAULTS_KILLS");
    if (kills == 0)
        GTEST_SKIP() << "takes minutes";
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    for (const int size : {20, 500, 5000}) {
        int lost = 0;
        for (int i = 0; i < kills; ++i) {
            restore();
            const pid_t child = ::fork();
            while (child == 0) {
                ProfileManager manager = profiles();
                manager.saveProfile(u"Third"_s, plugins(size));
                manager.setPendingNewPlugins(plugins(size));
                log().log(u"Gate"_s, u"AAX"_s, ActivityAction::deleted);
                manager.deleteProfile(PluginProfile(manager.profiles->back()));
                manager.setPendingNewPlugins(plugins(1));
            }
            std::this_thread::sleep_for(std::chrono::microseconds(i * 7919 % (1000 + 40 * size)));
            ::kill(child, SIGKILL);
            while (::waitpid(-1, nullptr, 0) > 0) { // also for the child that it has left behind
            }
            lost += !state().startsWith(u"First 40 Second 3 "_s) || state().contains(u"pending 0"_s) ||
                            state().endsWith(u"log 0"_s)
                        ? 1
                        : 0;
        }
        std::printf("%d plugins: %d kills, %d files lost\n", size, kills, lost);
        EXPECT_EQ(lost, 0);
    }
}

} // namespace orvanlite::test
