#include "ShellFixture.h"

#include "shell/toolkit/ViewUpdater.h"

#include <QDialog>
#include <QMenuBar>

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
    const std::pair<QString, QRect> cases[] = {
        {u"7 40 730 570"_s, {7, 40, 730, 570}},      {u"7 40 730 570 maximized"_s, {7, 40, 730, 570}},
        {u"4000 40 730 570"_s, {870, 40, 730, 570}}, {u"-400 2000 730 570"_s, {0, 430, 730, 570}},
        {u"0 0 3200 2000"_s, {0, 32, 1600, 968}},    {u"1 2 -3 4"_s, {50, 60, 720, 560}},
    };
    for (const auto& [saved, wanted] : cases) {
        MainWindow restored(m_system.defaults.standardDefaults);
        m_system.defaults.standardDefaults.setValue(u"NSWindow Frame x"_s, saved);
        restored.setGeometry(50, 60, 720, 560);
        restored.setFrameAutosaveName(u"x"_s);
        EXPECT_EQ(restored.geometry(), wanted) << qPrintable(saved);
        EXPECT_EQ(restored.isMaximized(), saved.endsWith(u"maximized"));
    }
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
