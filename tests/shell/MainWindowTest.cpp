#include "ShellFixture.h"

#include "shell/toolkit/ViewUpdater.h"

#include <QDialog>
#include <QMenuBar>
#include <QScreen>

namespace orvanlite::test {

class MainWindowTest : public ShellTest {};

TEST_F(MainWindowTest, LaunchPostsItsNotificationAndRestoresTheFrame)
{
    m_root.addFile(u"/Applications/Orvanlite.app/Contents/Info.plist",
                   infoPlist({{u"CFBundleShortVersionString"_s, u"7.8"_s}}));
    launch();
    ASSERT_FALSE(m_system.notifications.posted.empty());
    const LocalNotificationCenter::Posted wanted{u"com.yourcompany.Orvanlite.appDidLaunch"_s,
                                                 {{u"version"_s, u"7.8"_s}}};
    EXPECT_EQ(m_system.notifications.posted.front(), wanted) << "before the first count";
    EXPECT_EQ(window().windowTitle(), u"All Plugins"_s);
    EXPECT_EQ(window().size(), QSize(1200, 800));

    window().resize(900, 700);
    QTest::qWait(1);
    window().close();
    AppDelegate second(m_system.platform, m_shared);
    quietly([&] { second.applicationDidFinishLaunching(); });
    EXPECT_EQ(second.window()->size(), QSize(900, 700)) << "the saved frame wins over the centred one";
}

TEST_F(MainWindowTest, FitsTheSavedFrameIntoTheScreen)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const auto text = [](const QRect& frame) {
        return u"%1 %2 %3 %4"_s.arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
    };
    MemoryDefaults defaults;
    const auto restored = [&](const QString& saved) {
        defaults.setValue(u"NSWindow Frame x"_s, saved);
        MainWindow restoring(defaults);
        restoring.resize(720, 560);
        restoring.setFrameAutosaveName(u"x"_s);
        EXPECT_EQ(restoring.isMaximized(), saved.endsWith(u"maximized")) << qPrintable(saved);
        return restoring.geometry();
    };
    const QRect inside(screen.left() + 7, screen.top() + 40, 730, 570);
    EXPECT_EQ(restored(text(inside)), inside);
    EXPECT_EQ(restored(text(inside) + u" maximized"_s), inside);
    for (const QRect& frame : {inside.translated(screen.width() * 3, 0), inside.translated(-400, 2'000),
                               QRect(0, 0, screen.width() * 2, screen.height() * 2)}) {
        const QRect fitted = restored(text(frame));
        EXPECT_TRUE(screen.contains(fitted)) << qPrintable(text(fitted));
        EXPECT_EQ(fitted.size(), frame.size().boundedTo(screen.size() - QSize(0, 32)));
    }
    for (const QString& other : {u"1 2 3"_s, u"1 2 x 4"_s, u"1 2 -3 4"_s, QString()})
        EXPECT_EQ(restored(other).size(), QSize(720, 560));
}

TEST_F(MainWindowTest, ComesToTheFrontWithItsSheet)
{
    m_delegate.bringToFront(); // no window yet
    launch();
    window().setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    viewModel().isRunningScript = true; // a password prompt
    m_delegate.bringToFront();
    EXPECT_EQ(window().windowState() & ~Qt::WindowActive, Qt::WindowMaximized);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window(), 1'000));

    static_cast<ContentView*>(window().centralWidget())->showingError = true;
    window().hide();
    m_delegate.bringToFront();
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&named<QDialog>(window(), u"errorAlert"_s), 1'000));
}

TEST_F(MainWindowTest, HasTheWholeMenu)
{
    launch();
    QStringList entries;
    for (const QAction* menu : window().menuBar()->actions()) {
        for (const QAction* entry : menu->menu()->actions())
            entries.append((entry->text() + u' ' + entry->shortcut().toString()).trimmed());
    }
    entries.removeAll(QString()); // the separators
    EXPECT_EQ(
        entries.join(u", "_s),
        u"About Orvanlite, Hide Orvanlite Ctrl+H, Hide Others Ctrl+Alt+H, Show All, Check for Updates…, "
        "Quit Orvanlite Ctrl+Q, Undo Ctrl+Z, Redo Ctrl+Shift+Z, Cut Ctrl+X, Copy Ctrl+C, Paste Ctrl+V, "
        "Select All Ctrl+A, Minimize Ctrl+M, Zoom, Close Window Ctrl+W"_s);
}

TEST_F(MainWindowTest, EditEntriesReachTheFieldWithTheFocus)
{
    launch();
    auto& field = named<QLineEdit>(window(), u"searchField"_s);
    window().activateWindow();
    field.setFocus();
    QTest::keyClicks(&field, u"reverb"_s);
    window().findChild<QAction*>(u"selectAllAction"_s)->trigger();
    EXPECT_EQ(field.selectedText(), u"reverb"_s);
    window().findChild<QAction*>(u"cutAction"_s)->trigger();
    EXPECT_EQ(*viewModel().searchText, QString()) << "what the menu does to the field reaches the filter";
    window().findChild<QAction*>(u"pasteAction"_s)->trigger();
    EXPECT_EQ(*viewModel().searchText, u"reverb"_s);
}

TEST_F(MainWindowTest, ScansAfterItsFirstPaint)
{
    addPlugins(3);
    m_system.defaults.standardDefaults.values.clear(); // the first start
    bool wasPainted = false;
    quietly([&] {
        m_delegate.applicationDidFinishLaunching();
        viewModel().isLoading.observe(&window(), [&] {
            wasPainted |= *viewModel().isLoading && window().windowHandle()->isExposed() &&
                          named<QDialog>(window(), u"onboardingView"_s).windowHandle()->isExposed();
        });
        EXPECT_TRUE(viewModel().plugins->empty()) << "no scan before the window is visible";
    });
    EXPECT_TRUE(wasPainted);
    named<QDialog>(window(), u"onboardingView"_s).close();
    viewModel().showAllPlugins = true;
    addPlugins(4);
    quietly([this] { press(window(), u"scanButton"_s); });
    EXPECT_EQ(footer(), u"Showing 4 of 4 plugins"_s);
}

TEST_F(MainWindowTest, EveryControlHasANameAndAnIdentity)
{
    addPlugins(150);
    launch();
    search(u"plugin"_s);
    const auto controls = expectNamedControls(window()).size();
    EXPECT_GE(controls, 5);

    // Tab visits every control once, and does not stay in the table's cells.
    window().activateWindow();
    named<QLineEdit>(window(), u"searchField"_s).setFocus();
    QStringList stops;
    for (int i = 0; i < controls; ++i) {
        stops.append(focused());
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(focused(), u"searchField"_s);
    EXPECT_EQ(
        stops.join(u' ').toStdString(),
        "searchField clearSearchButton resetButton scanButton exportButton pluginTableHeader pluginTable loadAllButton "
        "allPluginsButton profilesHeader actionsHeader formatsHeader statisticsHeader launchAtLoginSwitch recentHeader sidebarHandle");
}

TEST(ViewUpdaterTest, RendersOnceForAllChangesOfATurn)
{
    Observable<int> number{0};
    int renders = 0;
    ViewUpdater updater([&] { ++renders; });
    updater.watch(number);
    number = 1;
    number = 2;
    EXPECT_EQ(renders, 0);
    turnEventLoop();
    EXPECT_EQ(renders, 1);
    number = 3;
    updater.flush();
    turnEventLoop();
    EXPECT_EQ(renders, 2);
}

} // namespace orvanlite::test
