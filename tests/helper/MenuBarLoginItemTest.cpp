#include "helper/HelperTest.h"

namespace orvanlite::test {

namespace {

class MenuBarLoginItemTest : public HelperTest {
protected:
    MenuBarLoginItemTest() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

    /// An agent whose event loop turns: it keeps others of its path from staying.
    void start(const QString& bundle)
    {
        const std::size_t before = workspace.runningApplications().size();
        workspace.openApplication(root.at(bundle));
        ASSERT_TRUE(waitFor([&] { return workspace.runningApplications().size() > before; }));
    }

    FakeClock clock;
    MenuBarLoginItem item{with(clock)};
    const QString entry = u"/Users/tester/.config/autostart/com.yourcompany.Orvanlite.helper-agent.desktop"_s;
};

} // namespace

TEST_F(MenuBarLoginItemTest, LeavesTheRightCopyAndReplacesAllOthers)
{
    const QString other = u"/Old/OrvanliteHelper.app"_s;
    addAgent(other);
    root.addBundle(u"/Other.app", infoPlist({{u"CFBundleIdentifier"_s, u"com.other"_s}}));
    const std::tuple<const char*, QStringList, bool> rows[] = {
        {"none", {}, false},
        {"a foreign one", {other}, false},
        {"the right one and a foreign one", {own, other}, false},
        {"the right one", {own}, true}};
    for (const auto& [name, running, isLeft] : rows) {
        SCOPED_TRACE(name);
        for (const QString& bundle : running)
            start(bundle);
        const auto before = workspace.runningApplications();
        item.setEnabled(true);
        EXPECT_TRUE(item.isEnabled());
        EXPECT_TRUE(root.content(entry).contains(own.toUtf8()));
        ASSERT_EQ(clock.sleepers(), isLeft ? 0 : 1);
        if (!isLeft) {
            EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
            clock.advance(std::chrono::milliseconds(499));
            EXPECT_EQ(clock.sleepers(), 1);
            clock.advance(std::chrono::milliseconds(1));
            EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().size() == 1; }));
        }
        const auto after = workspace.runningApplications();
        ASSERT_EQ(after.size(), 1U);
        EXPECT_EQ(after.front().bundlePath, root.at(own));
        EXPECT_EQ(after == before, isLeft);
        item.setEnabled(false);
        EXPECT_FALSE(item.isEnabled());
        EXPECT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
    }
}

TEST_F(MenuBarLoginItemTest, FailuresAreALineAndTheSwitchFallsBack)
{
    MenuBarSection section(item, nullptr);
    auto& launchAtLogin = *section.findChild<QAbstractButton*>(u"launchAtLoginSwitch"_s);
    const QString old = u"/Old/OrvanliteHelper.app"_s;
    addAgent(old);
    start(old);
    root.addFile(u"/Users/tester/.config/autostart", "in the way");
    testing::internal::CaptureStdout();
    launchAtLogin.click();
    item.setEnabled(false);
    const QString lines = QString::fromStdString(testing::internal::GetCapturedStdout());
    const qsizetype second = lines.indexOf(u'\n') + 1;
    EXPECT_TRUE(lines.startsWith(u"MenuBarLoginItem: Failed to register: "_s)) << qPrintable(lines);
    EXPECT_TRUE(lines.sliced(second).startsWith(u"MenuBarLoginItem: Failed to unregister: "_s));
    EXPECT_FALSE(launchAtLogin.isChecked());
    EXPECT_EQ(workspace.terminations, 0);
    EXPECT_EQ(clock.sleepers(), 0);

    // Switched off in the session's own settings meanwhile.
    QFile::remove(root.at(u"/Users/tester/.config/autostart"));
    launchAtLogin.click();
    EXPECT_TRUE(launchAtLogin.isChecked());
    root.addFile(entry, "[Desktop Entry]\nHidden=true\n");
    section.show();
    EXPECT_FALSE(launchAtLogin.isChecked());
    root.addFile(entry, "[Desktop Entry]\n"); // and on again, which is not drawn yet
    launchAtLogin.click();
    EXPECT_FALSE(root.exists(entry)) << "the opposite of what is the case";

    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
    clock.advance(std::chrono::milliseconds(500));
    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().size() == 1; }));
    item.terminateHelper();
    ASSERT_TRUE(waitFor([this] { return workspace.runningApplications().empty(); }));
    const int before = workspace.terminations;
    real.files.remove(root.at(own));
    start(old);
    item.launchHelperNow();
    EXPECT_EQ(workspace.terminations, before) << "nothing there to start in its place";
}

} // namespace orvanlite::test
