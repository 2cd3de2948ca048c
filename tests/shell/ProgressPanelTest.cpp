#include "UiSteps.h"
#include "shell/progress/ProgressHUDView.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/toolkit/ThemeController.h"

#include <QGraphicsEffect>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QWindow>

namespace orvanlite::test {

using std::chrono::milliseconds;

class ProgressPanelTest : public testing::Test {
protected:
    void open(const QString& label = u"Disabling 60 plugins…"_s, int count = 60)
    {
        m_manager.show(label, count);
        turnEventLoop();
    }
    void progress(double share)
    {
        m_manager.setProgress(share);
        turnEventLoop();
    }
    void moveTime(int duration)
    {
        m_system.clock.advance(milliseconds(duration));
        turnEventLoop();
    }
    [[nodiscard]] QWidget& panel() { return *m_manager.panel(); }
    [[nodiscard]] ProgressHUDView& view() { return named<ProgressHUDView>(panel(), u"progressView"_s); }
    [[nodiscard]] QString text(const QString& name)
    {
        const auto& label = named<QLabel>(panel(), name);
        return label.isVisible() ? label.text() : QString();
    }

    TestPlatform m_system;
    const ThemeController m_theme{m_system.appearance};
    ProgressWindowManager m_manager{m_system.platform};
};

TEST_F(ProgressPanelTest, ShowsProgressRoundedDown)
{
    const std::tuple<int, double, QString, int> cases[] = {
        {1, 0.999, QString(), 99},
        {2, 0.004, u"0 of 2 plugins"_s, 0},
        {60, 59.0 / 60, u"59 of 60 plugins"_s, 98},
        {2000, 1.0, u"2000 of 2000 plugins"_s, 100},
    };
    for (const auto& [count, share, done, percent] : cases) {
        SCOPED_TRACE(testing::Message() << count << " at " << share);
        open(u"Applying…"_s, count);
        EXPECT_EQ(*m_manager.hudModel().progress, 0) << "every batch starts at nothing";
        EXPECT_FALSE(panel().isVisible()) << "nothing covers the password prompt";
        progress(share);
        EXPECT_EQ(text(u"progressLabel"_s), u"Applying…"_s);
        EXPECT_EQ(text(u"progressCount"_s), done);
        EXPECT_EQ(text(u"progressPercent"_s), u"%1%"_s.arg(percent));
        EXPECT_EQ(named<QProgressBar>(panel(), u"progressBar"_s).value(), percent);
        EXPECT_EQ(named<QProgressBar>(panel(), u"progressBar"_s).accessibleName(), u"Batch progress"_s);
        for (const QWidget* part : view().findChildren<QWidget*>())
            EXPECT_TRUE(part->isHidden() || view().rect().contains(part->geometry(), true));
    }
    const QString whole = u"<b>Disabling</b> "_s + u"a very long name "_s.repeated(9);
    open(whole);
    const auto& label = named<QLabel>(panel(), u"progressLabel"_s);
    EXPECT_TRUE(label.text().startsWith(u"<b>Disabling</b> a very"_s) && label.text().endsWith(u'…'));
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(label.accessibleName(), whole);
}

TEST_F(ProgressPanelTest, ShowsTheFullBarBriefly)
{
    // Harmless without a panel, and after the manager has gone.
    {
        ProgressWindowManager shortLived(m_system.platform);
        shortLived.show(u"Enabling…"_s, 60);
        shortLived.hide();
    }
    m_manager.setProgress(0.2);
    m_manager.hide();
    moveTime(450);
    EXPECT_EQ(m_manager.panel(), nullptr);
    open();
    progress(0.2);
    EXPECT_TRUE(view().isAnimating());
    EXPECT_TRUE(waitFor([this] { return !view().graphicsEffect(); })) << "it grows into place";
    m_manager.hide();
    moveTime(440);
    EXPECT_TRUE(panel().isVisible());
    EXPECT_EQ(text(u"progressPercent"_s), u"100%"_s);
    EXPECT_EQ(text(u"progressCount"_s), u"60 of 60 plugins"_s);
    moveTime(20);
    EXPECT_FALSE(panel().isVisible() || view().isAnimating());

    // On purpose: the end of a batch closes the panel of one that has started meanwhile.
    open();
    m_manager.hide(); // as after a cancelled prompt
    turnEventLoop();
    EXPECT_FALSE(panel().isVisible());
    moveTime(200);
    open(u"Enabling 70 plugins…"_s, 70);
    progress(0.1);
    moveTime(240);
    EXPECT_TRUE(panel().isVisible() && view().isAnimating());
    m_system.appearance.reduced = true;
    m_system.appearance.notify();
    EXPECT_FALSE(view().isAnimating() || view().graphicsEffect());
    EXPECT_EQ(text(u"progressPercent"_s), u"10%"_s);
    moveTime(20);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(ProgressPanelTest, CentresOnTheActiveWindowWithoutTakingInput)
{
    QMainWindow window;
    window.setGeometry(120, 80, 700, 500);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto middle = [](const QWidget& widget) { return widget.frameGeometry().center(); };
    open();
    progress(0.1);
    EXPECT_EQ(middle(panel()), middle(window));
    // The offscreen platform activates every window, so check the flags.
    for (const Qt::WindowType flag : {Qt::FramelessWindowHint, Qt::WindowStaysOnTopHint,
                                      Qt::WindowTransparentForInput, Qt::WindowDoesNotAcceptFocus}) {
        EXPECT_TRUE(panel().windowHandle()->flags().testFlag(flag)) << std::hex << int(flag);
    }
    EXPECT_TRUE(panel().testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_TRUE(expectNamedControls(panel()).isEmpty()) << "nothing takes the focus";

    // The next batch: same panel, new view, on a dialog that is in use by then.
    const QPointer<QWidget> samePanel = m_manager.panel();
    const QPointer<QWidget> oldView = &view();
    QWidget dialog(&window, Qt::Dialog);
    dialog.setGeometry(20, 30, 300, 200);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    open();
    EXPECT_EQ(m_manager.panel(), samePanel);
    EXPECT_TRUE(oldView.isNull());
    progress(0.1);
    EXPECT_TRUE(view().isVisible());
    EXPECT_EQ(middle(panel()), middle(dialog));
}

TEST_F(ProgressPanelTest, IsInsideTheWindowWhereWindowsCannotBePlaced)
{
    ProgressWindowManager manager(m_system.platform, PanelPlacement::insideWindow);
    auto window = std::make_unique<QMainWindow>();
    window->resize(700, 500);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    manager.show(u"Enabling…"_s, 60);
    manager.setProgress(0.1);
    EXPECT_EQ(manager.panel()->parentWidget(), window.get());
    EXPECT_TRUE(manager.panel()->isVisible() && !manager.panel()->isWindow());
    window->resize(800, 600);
    turnEventLoop();
    EXPECT_EQ(manager.panel()->geometry().center(), window->rect().center());
    window.reset(); // takes the panel with it
    manager.setProgress(0.2);
    manager.show(u"Enabling…"_s, 60);
    manager.setProgress(0.1);
    EXPECT_FALSE(manager.panel()->isVisible()) << "no window to be in";
}

} // namespace orvanlite::test
