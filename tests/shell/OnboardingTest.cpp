#include "ShellFixture.h"

#include "shell/onboarding/OnboardingIllustration.h"
#include "shell/onboarding/OnboardingView.h"

namespace orvanlite::test {

class OnboardingTest : public ShellTest {
protected:
    OnboardingTest() { m_system.defaults.standard().setValue(u"onboardingComplete"_s, {}); }

    /// Whether the visible page has been announced to screen readers since the last call.
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
    /// A visible page would check the access forever.
    void TearDown() override
    {
        for (auto* each : window().findChildren<QDialog*>(u"onboardingView"_s))
            each->reject();
        ShellTest::TearDown();
    }
    [[nodiscard]] OnboardingView& sheet() { return named<OnboardingView>(window(), u"onboardingView"_s); }
    [[nodiscard]] bool isComplete()
    {
        return m_system.defaults.standard().value(u"onboardingComplete"_s).toBool();
    }
    void press(const QString& button)
    {
        ASSERT_TRUE(named(sheet(), button).isVisible());
        test::press(sheet(), button);
        EXPECT_TRUE(waitFor([this] { return shownPages() == 1; })); // the slide has ended
    }
    [[nodiscard]] qsizetype shownPages() { return visible<QLabel>(u"onboardingTitle"_s).size(); }
    /// Title and description of the visible page.
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
    /// Number of running animations.
    [[nodiscard]] auto moving()
    {
        const auto all = sheet().findChildren<QWidget*>();
        return std::count_if(all.begin(), all.end(), [](QWidget* each) {
            const auto* picture = dynamic_cast<OnboardingIllustration*>(each);
            return picture && picture->isRunning();
        });
    }
};

TEST_F(OnboardingTest, ShowsSixPagesOnce)
{
    launch();
    const QStringList titles{
        u"Welcome to Orvanlite"_s, u"Enable & Disable Plugins"_s, u"Profiles"_s,
        u"Select Mode"_s,          u"You're in Control"_s,        u"One Permission Needed"_s};
    for (int number = 0; number < OnboardingView::pageCount; ++number) {
        SCOPED_TRACE(number);
        EXPECT_TRUE(page().startsWith(titles[number] + u'|') && page().endsWith(u'.')) << qPrintable(page());
        EXPECT_EQ(has(u"onboardingBackButton"_s), number > 0);
        EXPECT_EQ(has(u"onboardingNextButton"_s), number < 5);
        EXPECT_EQ(has(u"onboardingStartButton"_s), number == 5);
        EXPECT_EQ(moving(), 1) << "only the visible illustration is animated";
        if (number < 5)
            press(u"onboardingNextButton"_s);
    }
    const auto turn = [this](Qt::Key key, const QString& title) {
        QTest::keyClick(sheet().focusWidget(), key);
        EXPECT_TRUE(waitFor([&] { return page().startsWith(title + u'|'); })) << qPrintable(title);
        EXPECT_TRUE(sheet().focusWidget() && sheet().focusWidget()->isVisible());
        EXPECT_TRUE(isSaid());
    };
    turn(Qt::Key_Left, titles[4]);
    turn(Qt::Key_Right, titles[5]);
    for (int number = 4; number >= 1; --number)
        turn(Qt::Key_Left, titles[number]);
    named(sheet(), u"onboardingBackButton"_s).setFocus();
    turn(Qt::Key_Return, titles[0]);
    turn(Qt::Key_Return, titles[1]);
    EXPECT_FALSE(isComplete());
    QTest::keyClick(&sheet(), Qt::Key_Escape);
    EXPECT_TRUE(isComplete()) << "leaving it on any page counts";
    settle();
    window().close();
    AppDelegate second(m_system.platform, m_shared);
    quietly([&] {
        second.applicationDidFinishLaunching();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(second.window()));
    });
    EXPECT_EQ(second.window()->findChild<QDialog*>(u"onboardingView"_s), nullptr);
}

TEST_F(OnboardingTest, ChecksDiskAccessWhileItsPageIsVisible)
{
    launch();
    for (int number = 0; number < 5; ++number)
        press(u"onboardingNextButton"_s);
    named(sheet(), u"openSettingsButton"_s).setFocus();
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
    EXPECT_TRUE(afterTwoSeconds(false).startsWith(u"You're All Set! > One Permission Needed"_s));
    press(u"onboardingBackButton"_s);
    m_diskAccess.granted = true;
    m_system.clock.advance(std::chrono::seconds(4));
    press(u"onboardingNextButton"_s);
    EXPECT_TRUE(page().startsWith(u"You're All Set!"_s)) << "checked as soon as the page is visible";
    EXPECT_TRUE(isSaid());
    QTest::keyClick(sheet().focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(isComplete());
    settle();
}

TEST_F(OnboardingTest, FollowsReducedMotionAndFontSize)
{
    m_system.appearance.reduced = true;
    launch();
    const FontScale large(2.2);
    settle();
    for (int number = 0; number < OnboardingView::pageCount; ++number) {
        SCOPED_TRACE(number);
        ASSERT_EQ(shownPages(), 1) << "at once";
        EXPECT_EQ(moving(), 0);
        for (const QLabel* text : sheet().findChildren<QLabel*>()) {
            EXPECT_TRUE(!text->isVisible() || text->height() >= text->heightForWidth(text->width()))
                << qPrintable(text->text());
        }
        EXPECT_GT(visible<QLabel>(u"onboardingTitle"_s).front()->font().pointSizeF(),
                  QApplication::font().pointSizeF());
        QTest::keyClick(sheet().focusWidget(), Qt::Key_Right);
    }
}

} // namespace orvanlite::test
