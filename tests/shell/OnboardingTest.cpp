#include "shell/ShellFixture.h"

#include "shell/onboarding/OnboardingIllustration.h"
#include "shell/onboarding/OnboardingView.h"

#include <QApplication>

namespace orvanlite::test {

class OnboardingTest : public ShellTest {
protected:
    OnboardingTest() { m_system.defaults.standardDefaults.values.remove(u"onboardingComplete"_s); }

    /// Whether a screen reader has been told to say the page in sight since the last call.
    [[nodiscard]] bool isSaid()
    {
        const QString wanted = page().replace(u'|', u". "_s);
        bool isSaid = false;
        for (QLabel* title : sheet().findChildren<QLabel*>(u"onboardingTitle"_s)) {
            isSaid |= title->isVisible() && title->parentWidget()->accessibleName() == wanted;
            title->parentWidget()->setAccessibleName({});
        }
        return isSaid;
    }
    /// A page that stays in sight would look for the access for ever.
    void TearDown() override
    {
        for (auto* each : window().findChildren<QDialog*>(u"onboardingView"_s))
            each->reject();
        ShellTest::TearDown();
    }
    [[nodiscard]] OnboardingView& sheet() { return named<OnboardingView>(window(), u"onboardingView"_s); }
    [[nodiscard]] bool isComplete()
    {
        return m_system.defaults.standardDefaults.value(u"onboardingComplete"_s).toBool();
    }
    void press(const QString& button)
    {
        auto& control = named<QAbstractButton>(sheet(), button);
        ASSERT_TRUE(control.isVisible());
        control.setFocus();
        QTest::keyClick(&control, Qt::Key_Space);
        EXPECT_TRUE(waitFor([this] { return shownPages() == 1; })); // the slide has ended
    }
    [[nodiscard]] int shownPages() { return static_cast<int>(visible<QLabel>(u"onboardingTitle"_s).size()); }
    /// Title and description of the page in sight.
    [[nodiscard]] QString page()
    {
        const auto titles = visible<QLabel>(u"onboardingTitle"_s);
        const auto texts = visible<QLabel>(u"onboardingDescription"_s);
        return titles.size() == 1 ? titles.front()->text() + u'|' + texts.front()->text() : u"not one page"_s;
    }
    template <typename Widget>
    [[nodiscard]] QList<Widget*> visible(const QString& name)
    {
        QList<Widget*> all = sheet().findChildren<Widget*>(name);
        all.removeIf([](Widget* each) { return !each->isVisible(); });
        return all;
    }
    [[nodiscard]] bool has(const QString& button) { return !visible<QAbstractButton>(button).isEmpty(); }
    /// How many pictures are in motion.
    [[nodiscard]] int moving()
    {
        int count = 0;
        for (QWidget* each : sheet().findChildren<QWidget*>()) {
            const auto* picture = dynamic_cast<OnboardingIllustration*>(each);
            count += picture && picture->isRunning() ? 1 : 0;
        }
        return count;
    }
};

TEST_F(OnboardingTest, LeadsThroughSixPagesOnce)
{
    launch();
    const char* titles[] = {
        "Welcome to Orvanlite|The all-in-one audio plugin manager for macOS. Scan, organize, and control every AU, "
        "VST, VST3, AAX, and CLAP plugin on your system.",
        "Enable & Disable Plugins|Toggle any plugin on or off without uninstalling it. Disabled plugins are moved to a "
        "safe folder — bring them back any time.",
        "Profiles|Save your plugin setup as a profile. Switch instantly between configurations for mixing, mastering, "
        "or different sessions.",
        "Select Mode|Tap \"Select\" to enter Select Mode. Choose one or more plugins, then press Enter to add them to "
        "the bulk action panel — enable, disable, or delete them all at once.",
        "You're in Control|Nothing is permanently deleted unless you choose it. Orvanlite just moves files — your "
        "plugins are always safe and recoverable.",
        "One Permission Needed|Orvanlite needs Full Disk Access to enable, disable, and delete plugins "
        "in system folders."};
    for (int number = 0; number < OnboardingView::pageCount; ++number) {
        SCOPED_TRACE(titles[number]);
        EXPECT_EQ(page().toStdString(), titles[number]);
        EXPECT_EQ(has(u"onboardingBackButton"_s), number > 0);
        EXPECT_EQ(has(u"onboardingNextButton"_s), number < 5);
        EXPECT_EQ(has(u"onboardingStartButton"_s), number == 5);
        EXPECT_EQ(moving(), 1) << "only the picture in sight moves";
        if (number < 5)
            press(u"onboardingNextButton"_s);
    }
    const auto turn = [this](Qt::Key key, const QString& title) {
        QTest::keyClick(sheet().focusWidget(), key);
        EXPECT_TRUE(waitFor([&] { return page().startsWith(title + u'|'); })) << qPrintable(title);
        EXPECT_TRUE(sheet().focusWidget() && sheet().focusWidget()->isVisible());
        EXPECT_TRUE(isSaid());
    };
    turn(Qt::Key_Left, u"You're in Control"_s);
    turn(Qt::Key_Right, u"One Permission Needed"_s);
    for (const char* title :
         {"You're in Control", "Select Mode", "Profiles", "Enable & Disable Plugins", "Welcome to Orvanlite"})
        turn(Qt::Key_Left, QString::fromUtf8(title));
    turn(Qt::Key_Return, u"Enable & Disable Plugins"_s);
    named<QAbstractButton>(sheet(), u"onboardingBackButton"_s).setFocus();
    turn(Qt::Key_Return, u"Welcome to Orvanlite"_s);
    EXPECT_FALSE(isComplete());
    QTest::keyClick(&sheet(), Qt::Key_Escape);
    EXPECT_TRUE(isComplete()) << "any way of leaving it counts, from any page";
    settle();
    window().close();

    AppDelegate second(m_system.platform, m_shared);
    testing::internal::CaptureStdout();
    second.applicationDidFinishLaunching();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(second.window()));
    settle();
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(second.window()->findChild<QDialog*>(u"onboardingView"_s), nullptr);
}

TEST_F(OnboardingTest, LooksForTheAccessWhileItsPageIsInSight)
{
    launch();
    for (int number = 0; number < 5; ++number)
        press(u"onboardingNextButton"_s);
    const std::pair<const char*, const char*> texts[] = {{"onboardingBackButton", "Back"},
                                                         {"onboardingNextButton", "Next"},
                                                         {"onboardingStartButton", "Get Started"},
                                                         {"openSettingsButton", "Open System Settings"}};
    for (const auto& [name, text] : texts)
        EXPECT_STREQ(qPrintable(named<QAbstractButton>(sheet(), QLatin1String(name)).text()), text);
    EXPECT_EQ(visible<QLabel>(u"settingsPathLabel"_s).value(0)->text(),
              u"Privacy & Security → Full Disk Access → enable Orvanlite"_s);
    named<QAbstractButton>(sheet(), u"openSettingsButton"_s).setFocus();
    QTest::keyClick(sheet().focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(isComplete()) << "Return is for the button that has the focus";
    EXPECT_EQ(m_system.workspace.opened, std::vector<QUrl>{QUrl(u"settings:privacy"_s)});
    const auto afterTwoSeconds = [this](bool granted) {
        m_diskAccess.granted = granted;
        m_system.clock.advance(std::chrono::milliseconds(1'999));
        const QString before = page();
        m_system.clock.advance(std::chrono::milliseconds(1));
        EXPECT_TRUE(isSaid());
        return before.section(u'|', 0, 0) + u" > "_s + page();
    };
    EXPECT_EQ(afterTwoSeconds(true).toStdString(),
              "One Permission Needed > You're All Set!|Full Disk Access granted. "
              "Orvanlite can now manage your plugins freely.");
    EXPECT_FALSE(has(u"openSettingsButton"_s) || !visible<QLabel>(u"settingsPathLabel"_s).isEmpty());
    EXPECT_TRUE(afterTwoSeconds(false).startsWith(u"You're All Set! > One Permission Needed"_s))
        << "either way";
    press(u"onboardingBackButton"_s);
    m_diskAccess.granted = true;
    m_system.clock.advance(std::chrono::seconds(4));
    press(u"onboardingNextButton"_s);
    EXPECT_TRUE(page().startsWith(u"You're All Set!"_s)) << "it looks at once when it comes";
    EXPECT_TRUE(isSaid());
    QTest::keyClick(sheet().focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(isComplete());
    settle();
}

TEST_F(OnboardingTest, KeepsStillWhereThatIsWantedAndFollowsTheFont)
{
    m_system.appearance.reduced = true;
    launch();
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(2.2 * before.pointSizeF());
    QApplication::setFont(large);
    settle();
    for (int number = 0; number < OnboardingView::pageCount; ++number) {
        SCOPED_TRACE(number);
        ASSERT_EQ(shownPages(), 1) << "at once";
        EXPECT_EQ(moving(), 0);
        for (const QLabel* text : sheet().findChildren<QLabel*>()) {
            EXPECT_TRUE(!text->isVisible() || text->height() >= text->heightForWidth(text->width()))
                << qPrintable(text->text());
        }
        EXPECT_GT(visible<QLabel>(u"onboardingTitle"_s).front()->font().pointSizeF(), large.pointSizeF());
        QTest::keyClick(sheet().focusWidget(), Qt::Key_Right);
    }
    QApplication::setFont(before);
}

} // namespace orvanlite::test
