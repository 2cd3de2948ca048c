#include "ShellFixture.h"

#include "profiles/ProfilesFixture.h"
#include "shell/sheets/NewPluginsSheet.h"
#include "shell/toolkit/Banner.h"
#include "shell/updates/UpdateBanner.h"

#include <QListView>

namespace orvanlite::test {

class NewPluginsSheetTest : public ShellTest {
protected:
    NewPluginsSheetTest()
    {
        m_system.appearance.reduced = true;
        // After the very first scan no plugin is new.
        m_database.replaceAllPlugins({plugin(u"Earlier"_s, true)});
        ProfileManager manager(m_system.platform);
        manager.saveProfile(u"P"_s, {});
        manager.saveProfile(u"Q"_s, {});
        addPlugins(
            {u"VST3/A.vst3"_s, u"Disabled/VST3/B.vst3"_s, u"Components/C.component"_s, u"CLAP/D.clap"_s});
    }
    [[nodiscard]] Banner& banner() { return named<Banner>(window(), u"newPluginsBanner"_s); }
    [[nodiscard]] NewPluginsSheet& sheet() { return named<NewPluginsSheet>(window(), u"newPluginsSheet"_s); }
    [[nodiscard]] QAbstractButton& button(const QString& name) { return named(window(), name); }
    void press(const QString& name) { test::press(window(), name); }
    [[nodiscard]] QListView& list(const QString& name) { return named<QListView>(sheet(), name); }
    void toggle(const QString& name)
    {
        for (const AudioPlugin& each : AudioPlugins(*viewModel().plugins)) {
            if (each.name == name)
                runTask(viewModel().togglePlugin(each));
        }
    }
    [[nodiscard]] QStringList stored() { return summary(ProfileManager(m_system.platform)); }
    [[nodiscard]] bool isPending()
    {
        return !ProfileManager(m_system.platform).pendingNewPluginKeys->isEmpty();
    }
};

TEST_F(NewPluginsSheetTest, LeadsFromTheBannerToTheProfiles)
{
    launch();
    ASSERT_TRUE(banner().isVisible() && isPending());
    const auto& title = named<QLabel>(window(), u"newPluginsBannerTitle"_s);
    EXPECT_EQ(title.text(), u"4 new plugins detected: A, B, C +1 more"_s);
    toggle(u"B"_s); // meanwhile
    press(u"newPluginsBannerButton"_s);
    ASSERT_TRUE(sheet().isVisible());
    expectNamedControls(sheet());
    EXPECT_EQ(
        spokenRows(list(u"newPluginsList"_s)),
        u"[x] A, VST3, Enabled|[x] B, VST3, Enabled|[x] C, Audio Units, Enabled|[x] D, CLAP, Enabled"_s);
    EXPECT_EQ(spokenRows(list(u"newPluginsProfileList"_s)), u"[x] P|[x] Q"_s);

    list(u"newPluginsList"_s).setCurrentIndex(list(u"newPluginsList"_s).model()->index(0, 0));
    QTest::keyClick(&list(u"newPluginsList"_s), Qt::Key_Space);
    click(list(u"newPluginsList"_s), 1);
    const auto& chip = button(u"newPluginsChip VST3"_s);
    EXPECT_EQ(chip.text() + u' ' + chip.accessibleDescription(), u"VST3 (2) off"_s);
    press(u"newPluginsChip VST3"_s);
    press(u"newPluginsChip CLAP"_s);
    EXPECT_TRUE(chip.isChecked() && !button(u"newPluginsChip CLAP"_s).isChecked());
    EXPECT_EQ(named<QLabel>(window(), u"newPluginsSelectedLabel"_s).text(), u"3 of 4 plugins selected"_s);
    press(u"newPluginsAllProfilesButton"_s);
    EXPECT_FALSE(button(u"addNewPluginsButton"_s).isEnabled()) << "no profile is ticked";
    EXPECT_EQ(button(u"newPluginsAllProfilesButton"_s).text(), u"Select All"_s);
    click(list(u"newPluginsProfileList"_s), 0);
    EXPECT_EQ(button(u"addNewPluginsButton"_s).text(), u"Add 3 to Profiles"_s);
    toggle(u"C"_s);
    quietly([this] { runTask(viewModel().scanForPlugins()); }); // gives every row a new id
    QTest::keyClick(&list(u"newPluginsList"_s), Qt::Key_Return);
    settle();
    EXPECT_FALSE(sheet().isVisible() || banner().isVisible() || isPending());
    EXPECT_EQ(stored().join(u'\n'),
              u"P: A|VST3,B|VST3 / 3 A|VST3,B|VST3,C|Audio Units,D|CLAP\nQ:  / 0 D|CLAP"_s);

    addPlugins({u"VST3/E.vst3"_s});
    quietly([this] { press(u"scanButton"_s); });
    EXPECT_FALSE(banner().isVisible()) << "only after the scan at start-up";
}

TEST_F(NewPluginsSheetTest, StaysPendingUntilDecided)
{
    launch();
    press(u"newPluginsBannerButton"_s);
    click(list(u"newPluginsProfileList"_s), 0);
    QTest::keyClick(&sheet(), Qt::Key_Escape);
    EXPECT_TRUE(!sheet().isVisible() && banner().isVisible() && isPending());
    press(u"newPluginsBannerButton"_s);
    EXPECT_EQ(spokenRows(list(u"newPluginsProfileList"_s)), u"[x] P|[x] Q"_s);
    press(u"skipNewPluginsButton"_s);
    EXPECT_FALSE(sheet().isVisible() || banner().isVisible() || isPending());
    EXPECT_EQ(stored().last(), u"Q:  / 0 A|VST3,B|VST3,C|Audio Units,D|CLAP"_s);
}

TEST_F(NewPluginsSheetTest, NarrowBannerWrapsAndIsDismissedOnce)
{
    launch();
    const int height = banner().height();
    banner().setFixedWidth(300);
    settle();
    EXPECT_GT(button(u"newPluginsBannerButton"_s).y(), height) << "below the text";
    for (const QWidget* each : banner().findChildren<QWidget*>())
        EXPECT_TRUE(each->isHidden() || banner().rect().contains(each->geometry()))
            << qPrintable(each->objectName());

    m_system.appearance.reduced = false;
    click(button(u"newPluginsBannerDismiss"_s));
    EXPECT_TRUE(banner().isVisible()) << "on its way";
    press(u"newPluginsBannerButton"_s);
    EXPECT_FALSE(sheet().isVisible()) << "the decision is made";
    EXPECT_TRUE(waitFor([this] { return !banner().isVisible(); }));
    EXPECT_FALSE(isPending());
}

TEST_F(ShellTest, UpdateBannerOpensTheDownloadAndQuits)
{
    launch();
    auto& updates = named<Banner>(window(), u"updateBanner"_s);
    EXPECT_FALSE(updates.isVisible());
    m_system.appearance.reduced = true;
    int quits = 0;
    QWidget place;
    Banner* banner = makeUpdateBanner(
        m_updateChecker, m_system.platform, [&] { ++quits; }, &place);
    m_updateChecker.latestVersion = u"9.1"_s;
    m_updateChecker.updateReleaseNotes = u"Faster.\nQuieter."_s;
    m_updateChecker.updateAvailable = true;
    settle();
    EXPECT_TRUE(updates.isVisible() && banner->isShown());
    EXPECT_EQ(updates.accessibleName(), u"Update Available — v9.1. Faster. Quieter."_s);
    for (const QString& url : {u""_s, u"no url"_s, u"https://good.test/new.dmg"_s}) {
        SCOPED_TRACE(qPrintable(url));
        const int wanted = url.startsWith(u"https"_s) ? 1 : 0;
        m_updateChecker.updateDownloadURL = url;
        for (int click = 0; click < 2; ++click) // people double-click everything
            QTest::mouseClick(&named(*banner, u"updateBannerButton"_s), Qt::LeftButton);
        EXPECT_EQ(std::ssize(m_system.workspace.opened), wanted);
        m_system.clock.advance(std::chrono::milliseconds(499));
        EXPECT_EQ(quits, 0) << "the browser needs time to open";
        m_system.clock.advance(std::chrono::milliseconds(1));
        EXPECT_EQ(quits, wanted);
    }
    m_updateChecker.updateReleaseNotes = u" \n "_s;
    settle();
    EXPECT_FALSE(named<QLabel>(updates, u"updateBannerNotes"_s).isVisible());
    click(updates, u"updateBannerDismiss"_s);
    EXPECT_FALSE(*m_updateChecker.updateAvailable || updates.isVisible());
}

} // namespace orvanlite::test
