#pragma once

#include "platform/MainBundle.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "shell/sidebar/MenuBarLoginItem.h"
#include "shell/sidebar/MenuBarSection.h"
#include "support/Fakes.h"
#include "support/PrivateBus.h"

#include <QAbstractButton>
#include <QFile>
#include <QTest>

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace platform;

/// The system's own, except that it sees no application outside of the root.
class RootedWorkspace final : public Workspace {
public:
    RootedWorkspace(Workspace& real, QString root)
        : m_real(real)
        , m_root(std::move(root))
    {}
    bool open(const QUrl& url) override { return m_real.open(url); }
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override
    {
        auto running = m_real.runningApplications();
        std::erase_if(running, [this](const auto& each) { return !each.bundlePath.startsWith(m_root); });
        return running;
    }
    void openApplication(const QString& bundlePath) override { m_real.openApplication(bundlePath); }
    void terminate(const RunningApplication& application) override
    {
        ++terminations;
        m_real.terminate(application);
    }
    int terminations = 0;

private:
    Workspace& m_real;
    QString m_root;
};

/// The application's side of real agents, which run in a root of their own on a session bus of their own.
class HelperTest : public testing::Test {
protected:
    HelperTest()
    {
        qputenv("ORV_SANDBOX_ROOT", root.path().toUtf8());
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
        addAgent(own);
    }
    ~HelperTest() override
    {
        for (const RunningApplication& each : workspace.runningApplications())
            workspace.terminate(each);
        waitFor([this] { return workspace.runningApplications().empty(); });
    }

    void addAgent(const QString& bundle) const
    {
        const QString contents = bundle + u"/Contents"_s;
        root.addFolder(contents + u"/MacOS"_s);
        const QString executable = root.at(contents + u"/MacOS/OrvanliteHelper"_s);
        ASSERT_TRUE(QFile::copy(QStringLiteral(ORV_HELPER_INFO_PLIST), root.at(contents + u"/Info.plist"_s)));
        ASSERT_TRUE(QFile::copy(QStringLiteral(ORV_SANDBOX_AGENT), executable));
    }
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 20'000); }
    [[nodiscard]] Platform with(Clock& clock)
    {
        return {real.layout,   real.files,         real.scripts,           real.processes,
                real.defaults, real.notifications, real.loginItems,        workspace,
                mainBundle,    real.appearance,    real.userNotifications, clock};
    }

    TempRoot root;
    PrivateBus bus;
    std::unique_ptr<PlatformServices> services = makePlatformServices(root.layout(), Elevation::none);
    Platform real = services->platform();
    const QString own = u"/Applications/Orvanlite.app/Contents/Library/LoginItems/OrvanliteHelper.app"_s;
    MainBundle mainBundle{real.files, root.at(u"/Applications/Orvanlite.app/Contents/MacOS/plugin-manager")};
    RootedWorkspace workspace{real.workspace, root.path()};
};

} // namespace orvanlite::test
