#include "ShellFixture.h"

#include "shell/app/CheatCode.h"
#include "shell/sheets/UADCleanupSheet.h"

#include <QListView>
#include <QStackedWidget>
#include <QWindow>

namespace orvanlite::test {

class UADCleanupSheetTest : public ShellTest {
protected:
    UADCleanupSheetTest()
    {
        addPlugins({u"VST3/UAD Neve 1073.vst3"_s, u"Components/UAD Neve 1073(m).component"_s,
                    u"VST3/UAD API 2500.vst3"_s, u"VST3/UAD Studer A800.vst3"_s,
                    u"Disabled/VST3/UAD Pultec.vst3"_s});
    }
    [[nodiscard]] UADCleanupSheet& sheet() { return named<UADCleanupSheet>(window(), u"uadCleanupSheet"_s); }
    /// The texts of the current page, from top to bottom.
    [[nodiscard]] QString shown()
    {
        QStringList texts;
        const QWidget* state = sheet().findChild<QStackedWidget*>()->currentWidget();
        for (const QLabel* label : state->findChildren<QLabel*>()) {
            if (label->isVisibleTo(&sheet()) && !label->text().isEmpty())
                texts.append(label->text());
        }
        return texts.join(u'|');
    }
    [[nodiscard]] QListView& list() { return named<QListView>(sheet(), u"uadPluginList"_s); }
    void press(const QString& name) { test::press(sheet(), name); }
};

TEST_F(UADCleanupSheetTest, LeadsFromTheKeysToTheDisabledDemos)
{
    launch();
    click(window(), u"resetButton"_s);
    quietly([this] {
        for (int i = 0; i < 8; ++i)
            QTest::keyClick(window().windowHandle(), i % 2 == 0 ? Qt::Key_Q : Qt::Key_E);
    });
    ASSERT_TRUE(sheet().isVisible());
    EXPECT_FALSE(static_cast<ContentView*>(window().centralWidget())->cheatCode().cheatCodeArmed());
    EXPECT_EQ(shown(), u"UAD Meter & Control Panel not found. Please install UAD software first."_s);

    m_root.addFile(
        u"/Users/tester/Desktop/UADSystemProfile.txt",
        "UAD-2 Plug-in Authorizations\nUAD Neve 1073: Demo expired\nUAD Studer A800: Authorized\n"
        "UAD Pultec: Demo expired\nUAD API 2500: Demo (3 days left)\nUAD Moog: Demo not started\n");
    press(u"cleanupTryAgainButton"_s);
    EXPECT_EQ(spokenRows(list()).toStdString(),
              "Demo Expired — no longer usable|[x] UAD Neve 1073, Demo Expired"
              "|Active Demo — still playable but not owned|[x] UAD API 2500, Demo (3 days left)"
              "|Demo Not Started — never owned or trialed|[x] UAD Moog, Demo Not Started"
              "|Already disabled|UAD Pultec, Already disabled");
    EXPECT_EQ(shown(), u"3 selected|1 authorized · 1 already off"_s);
    press(u"noDemosButton"_s);
    auto& disable = named(sheet(), u"disableDemosButton"_s);
    EXPECT_TRUE(disable.text() == u"Disable 0 Plugins"_s && !disable.isEnabled());
    press(u"expiredOnlyButton"_s);
    list().setCurrentIndex(list().model()->index(1, 0));
    test::press(sheet(), u"uadPluginList"_s, Qt::Key_Up); // all headings are skipped
    EXPECT_EQ(list().currentIndex().row(), 1);
    test::press(sheet(), u"uadPluginList"_s, Qt::Key_Down);
    EXPECT_EQ(list().currentIndex().row(), 3);
    press(u"uadPluginList"_s);
    click(list(), 7);
    EXPECT_EQ(disable.text(), u"Disable 2 Plugins"_s) << "what is off already cannot be chosen";
    QTest::keyClick(&list(), Qt::Key_Return);
    ASSERT_TRUE(waitFor([this] { return *m_uadCleanup.cleanupComplete; }));
    settle();
    EXPECT_EQ(shown(), u"Cleanup Complete!|3 demo plugins disabled"_s);
    QTest::keyClick(&sheet(), Qt::Key_Return);
    EXPECT_FALSE(sheet().isVisible() || *m_uadCleanup.showCleanupSheet);
}

TEST_F(UADCleanupSheetTest, ShowsTheFirstStateThatHolds)
{
    launch();
    m_uadCleanup.isLoading = true;
    m_uadCleanup.cleanupComplete = true;
    m_uadCleanup.errorMessage = u"<b>Nothing</b>"_s;
    m_uadCleanup.disabledCount = 1;
    m_uadCleanup.showCleanupSheet = true;
    settle();
    EXPECT_EQ(sheet().size(), QSize(520, 500));
    EXPECT_EQ(shown(), u"Analyzing UAD plugin authorizations..."_s);
    press(u"closeCleanupButton"_s);
    EXPECT_TRUE(*m_uadCleanup.isLoading && !*m_uadCleanup.showCleanupSheet);
    m_uadCleanup.showCleanupSheet = true;
    m_uadCleanup.isLoading = false;
    settle();
    EXPECT_EQ(shown(), u"Cleanup Complete!|1 demo plugin disabled"_s);
    m_uadCleanup.cleanupComplete = false;
    settle();
    EXPECT_EQ(shown(), u"<b>Nothing</b>"_s);
    press(u"cleanupProblemCancelButton"_s);
    EXPECT_FALSE(sheet().isVisible());
    m_uadCleanup.errorMessage.clear();
    m_uadCleanup.showCleanupSheet = true;
    settle();
    EXPECT_EQ(shown(), u"No demo plugins found"_s);
    expectNamedControls(sheet());
    QTest::keyClick(&sheet(), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(sheet().isVisible() || *m_uadCleanup.showCleanupSheet);
}

} // namespace orvanlite::test
