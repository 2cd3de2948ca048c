#include "shell/progress/ProgressDecoration.h"
#include "shell/progress/ProgressHUDView.h"
#include "shell/progress/ProgressWindowManager.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/TabularLabel.h"
#include "shell/toolkit/ThemeController.h"
#include "support/Fakes.h"

#include <QApplication>
#include <QGraphicsEffect>
#include <QMainWindow>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include <cmath>

namespace orvanlite::test {

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

class ProgressPanelTest : public testing::Test {
protected:
    void open(int count = 60) { open(u"Disabling 60 plugins…"_s, count); }
    void open(const QString& label, int count)
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
    [[nodiscard]] ProgressHUDView& view() { return child<ProgressHUDView>(u"progressView"_s); }
    [[nodiscard]] QString text(const QString& name)
    {
        const QLabel& label = child<QLabel>(name);
        return label.isVisible() ? label.text() : QString();
    }
    template <typename Widget>
    Widget& child(const QString& name)
    {
        const QList<Widget*> found = panel().findChildren<Widget*>(name);
        if (found.size() != 1)
            qFatal("%d children are named %s", int(found.size()), qPrintable(name));
        return *found.front();
    }
    static QRgb pixel(QWidget& widget, int x, int y) { return widget.grab().toImage().pixel(x, y); }

    TestPlatform m_system;
    const ThemeController m_theme{m_system.appearance};
    ProgressWindowManager m_manager{m_system.platform};
};

TEST_F(ProgressPanelTest, SaysHowFarItIs)
{
    struct Case {
        int count;
        double progress;
        QString done;
        QString percent;
        int value;
    };
    // What is not whole is cut, not rounded.
    const Case cases[] = {
        {0, 0.5, QString(), u"50%"_s, 50},
        {1, 0.999, QString(), u"99%"_s, 99},
        {2, 0.0, u"0 of 2 plugins"_s, u"0%"_s, 0},
        {2, 0.5, u"1 of 2 plugins"_s, u"50%"_s, 50},
        {60, 0.333, u"19 of 60 plugins"_s, u"33%"_s, 33},
        {60, 59.0 / 60, u"59 of 60 plugins"_s, u"98%"_s, 98},
        {2000, 1.0, u"2000 of 2000 plugins"_s, u"100%"_s, 100},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(testing::Message() << row.count << " at " << row.progress);
        open(u"Applying…"_s, row.count);
        EXPECT_EQ(text(u"progressPercent"_s), u"0%"_s) << "every batch starts at nothing";
        progress(row.progress);
        EXPECT_EQ(text(u"progressLabel"_s), u"Applying…"_s);
        EXPECT_EQ(text(u"progressCount"_s), row.done);
        EXPECT_EQ(text(u"progressPercent"_s), row.percent);
        const auto& bar = child<QProgressBar>(u"progressBar"_s);
        EXPECT_EQ(bar.value(), row.value);
        EXPECT_EQ(bar.accessibleName(), u"Batch progress"_s);
        for (const QWidget* part : view().findChildren<QWidget*>())
            EXPECT_TRUE(part->isHidden() || view().rect().contains(part->geometry(), true));
    }
}

TEST_F(ProgressPanelTest, CutsALongLabelShortAndTakesItLiterally)
{
    const QString whole = u"<b>Disabling</b> "_s + u"a very long name "_s.repeated(9);
    open(whole, 60);
    const auto& label = child<QLabel>(u"progressLabel"_s);
    EXPECT_TRUE(label.text().startsWith(u"<b>Disabling</b> a very"_s) && label.text().endsWith(u'…'));
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_LE(label.fontMetrics().horizontalAdvance(label.text()), 320);
    EXPECT_EQ(label.accessibleName(), whole);
}

TEST_F(ProgressPanelTest, ShowsTheFullBarForAMomentAndGoes)
{
    m_manager.setProgress(0.2); // harmless without a panel
    EXPECT_EQ(m_manager.panel(), nullptr);
    open();
    progress(0.2);
    m_manager.hide();
    moveTime(440);
    EXPECT_TRUE(panel().isVisible());
    EXPECT_EQ(text(u"progressPercent"_s), u"100%"_s);
    EXPECT_EQ(text(u"progressCount"_s), u"60 of 60 plugins"_s);
    const QPointer<QWidget> before = m_manager.panel();
    moveTime(20);
    EXPECT_EQ(m_manager.panel(), before);
    EXPECT_FALSE(panel().isVisible());

    // A second batch within the moment loses its panel to the end of the first.
    open();
    m_manager.hide();
    moveTime(200);
    open(u"Enabling 70 plugins…"_s, 70);
    moveTime(240);
    EXPECT_TRUE(panel().isVisible());
    EXPECT_EQ(text(u"progressPercent"_s), u"0%"_s);
    moveTime(20);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(ProgressPanelTest, SurvivesAnEndWithoutAPanelOrAManager)
{
    m_manager.hide();
    moveTime(450);
    EXPECT_EQ(m_manager.panel(), nullptr);
    {
        ProgressWindowManager shortLived(m_system.platform);
        shortLived.show(u"Enabling…"_s, 60);
        shortLived.hide();
    }
    EXPECT_EQ(m_system.clock.sleepers(), 1);
    moveTime(450);
    EXPECT_EQ(m_system.clock.sleepers(), 0);
}

TEST_F(ProgressPanelTest, LiesOnTheWindowInUseAndTakesNothingFromIt)
{
    QMainWindow window;
    window.setGeometry(120, 80, 700, 500);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto middle = [](const QWidget& widget) { return widget.frameGeometry().center(); };

    open();
    EXPECT_EQ(panel().size(), QSize(400, 210));
    EXPECT_EQ(panel().windowTitle(), u"Progress"_s);
    EXPECT_EQ(middle(panel()), middle(window));
    // The platform without a display makes every window active; so the demands on the system are looked at.
    for (const Qt::WindowType flag : {Qt::FramelessWindowHint, Qt::WindowStaysOnTopHint,
                                      Qt::WindowTransparentForInput, Qt::WindowDoesNotAcceptFocus}) {
        EXPECT_TRUE(panel().windowHandle()->flags().testFlag(flag)) << std::hex << int(flag);
    }
    EXPECT_TRUE(panel().testAttribute(Qt::WA_ShowWithoutActivating));
    for (const QWidget* part : panel().findChildren<QWidget*>())
        EXPECT_EQ(part->focusPolicy(), Qt::NoFocus);

    // The next batch: same panel, new view, wherever the window is by then. A dialog in use goes before.
    const QPointer<QWidget> samePanel = m_manager.panel();
    const QPointer<QWidget> oldView = &view();
    window.move(300, 200);
    open();
    EXPECT_EQ(m_manager.panel(), samePanel);
    EXPECT_TRUE(oldView.isNull());
    EXPECT_TRUE(view().isVisible());
    EXPECT_EQ(middle(panel()), middle(window));
    QWidget dialog(&window, Qt::Dialog);
    dialog.setGeometry(20, 30, 300, 200);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    open();
    EXPECT_EQ(middle(panel()), middle(dialog));
}

TEST_F(ProgressPanelTest, MovesOnlyWhileItIsSeen)
{
    QMainWindow window;
    window.show();
    open();
    ASSERT_TRUE(view().isAnimating());
    auto& wave = *panel().findChild<WaveBand*>();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !view().graphicsEffect(); })) << "it grows into place";
    const QImage first = wave.grab().toImage();
    EXPECT_TRUE(QTest::qWaitFor([&] { return wave.grab().toImage() != first; }));
    m_manager.hide();
    moveTime(450);
    EXPECT_FALSE(view().isAnimating());

    open();
    EXPECT_TRUE(view().isAnimating());
    m_system.appearance.reduced = true;
    m_system.appearance.notify();
    EXPECT_FALSE(view().isAnimating());
    EXPECT_EQ(view().graphicsEffect(), nullptr);
    open();
    EXPECT_FALSE(view().isAnimating());
    EXPECT_EQ(view().graphicsEffect(), nullptr);
    progress(0.5);
    EXPECT_EQ(text(u"progressPercent"_s), u"50%"_s) << "the numbers still count";
    m_system.appearance.reduced = false;
    m_system.appearance.notify();
    EXPECT_TRUE(view().isAnimating());
}

TEST_F(ProgressPanelTest, DrawsTheBarAsFarAsItIsInLightAndDark)
{
    m_system.appearance.reduced = true;
    const QPalette before = QApplication::palette();
    open();
    auto& bar = child<QProgressBar>(u"progressBar"_s);
    for (const bool dark : {false, true}) {
        SCOPED_TRACE(dark);
        QApplication::setPalette(AppTheme::palette(dark, AppTheme::defaultAccent(dark)));
        turnEventLoop();
        EXPECT_EQ(QColor(pixel(view(), 20, 100)).lightness() < 128, dark);
        for (const double share : {0.0, 0.02, 0.4, 1.0}) {
            SCOPED_TRACE(share);
            progress(share);
            const int edge = static_cast<int>(share * 320);
            const auto isFilled = [&bar](int x) { return QColor(pixel(bar, x, 4)).hslSaturation() > 90; };
            EXPECT_TRUE(edge == 0 || isFilled(edge - 3));
            EXPECT_FALSE(edge < 320 && isFilled(edge + 3));
        }
    }
    QApplication::setPalette(before);
}

TEST(ProgressDecorationTest, TheWaveStaysInItsBandAndNeverJumps)
{
    constexpr double kFrame = 0.016;
    for (int bar = 0; bar < 36; ++bar) {
        double last = waveHeight(bar, 0);
        double lowest = 1;
        double highest = 0;
        for (double seconds = kFrame; seconds < 12; seconds += kFrame) {
            const double height = waveHeight(bar, seconds);
            EXPECT_LT(std::abs(height - last), 0.15) << bar << " at " << seconds;
            lowest = std::min(lowest, height);
            highest = std::max(highest, height);
            last = height;
        }
        EXPECT_GE(lowest, 0.1);
        EXPECT_LE(highest, 1);
        EXPECT_GT(highest - lowest, 0.6);
    }
}

TEST(TabularLabelTest, DigitsAreEquallyWide)
{
    TabularLabel label;
    QFont slanted = label.font();
    slanted.setLetterSpacing(QFont::PercentageSpacing, 103.7); // widths that are no whole pixels
    label.setFont(slanted);
    for (const QString& digits : {u"11111"_s, u"07494"_s, u"88888"_s})
        EXPECT_EQ(label.widthOf(digits + u" of"_s), label.widthOf(u"00000 of"_s));
    EXPECT_GE(label.widthOf(u"88888"_s), label.fontMetrics().horizontalAdvance(u"88888"_s) - 5);
}

} // namespace orvanlite::test
