#include "ShellFixture.h"

#include <QMenuBar>
#include <QScopeGuard>
#include <QScrollBar>

namespace orvanlite::test {

class PluginTableTest : public ShellTest {};

TEST_F(PluginTableTest, SortsAndSearches)
{
    addPlugins({u"VST3/Alpha.vst3"_s, u"VST/beta.vst"_s, u"Disabled/CLAP/delta.clap"_s});
    launch();
    EXPECT_EQ(shownNames(), (QStringList{u"Alpha"_s, u"beta"_s, u"delta"_s}));
    clickHeader(1);
    EXPECT_EQ(shownNames(), (QStringList{u"delta"_s, u"beta"_s, u"Alpha"_s}));
    clickHeader(0);
    EXPECT_EQ(shownNames().front(), u"delta"_s) << "disabled ones first";
    EXPECT_EQ((*viewModel().sortOrder)[1].key, PluginSortKey::name);
    EXPECT_EQ(table().header()->accessibleName(), u"Sort by Status, ascending"_s);
    QAccessibleInterface* header = QAccessible::queryAccessibleInterface(table().header());
    EXPECT_EQ(header->parent()->indexOfChild(header), 0) << "readers ignore it otherwise";
    EXPECT_EQ(header->parent()->child(1)->object(), &table());
    search(u"ETA"_s);
    EXPECT_EQ(shownNames(), QStringList{u"beta"_s});
    spoken(named<QLineEdit>(window(), u"searchField"_s)).setText(QAccessible::Value, u"ph"_s);
    endSearchPause();
    EXPECT_EQ(shownNames(), QStringList{u"Alpha"_s}) << "text set by assistive technology";
}

TEST_F(PluginTableTest, SwitchesByMouseAndKeyboard)
{
    const QString place = u"/Library/Audio/Plug-Ins/VST3/Foo.vst3"_s;
    m_root.addBundle(place);
    addPlugins({u"VST3/Zeta.vst3"_s});
    launch();
    const auto isOn = [this] {
        return table().model()->index(0, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    };
    clickSwitch(0);
    ASSERT_TRUE(waitFor([&] { return !isOn(); }));
    EXPECT_TRUE(m_root.exists(u"/Library/Audio/Plug-Ins/Disabled/VST3/Foo.vst3"));
    EXPECT_TRUE(table().selectionModel()->isRowSelected(0)) << "the click selects its row as well";
    QAccessibleInterface* cells = QAccessible::queryAccessibleInterface(&table());
    EXPECT_EQ(cells->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), u"Disabled"_s);

    table().setFocus();
    table().setCurrentIndex(table().model()->index(0, 4));
    QTest::keyClick(&table(), Qt::Key_Space);
    ASSERT_TRUE(waitFor(isOn));
    EXPECT_TRUE(m_root.exists(place));

    m_system.scripts.failNext(u"User canceled."_s);
    clickSwitch(0);
    settle();
    EXPECT_TRUE(isOn() && m_root.exists(place));
    EXPECT_TRUE(viewModel().error->has_value());
    EXPECT_FALSE(QApplication::activeModalWidget()) << "a failure raises no dialog";
    const auto& status = named<QLabel>(named<QWidget>(window(), u"tableFooter"_s), u"workStatusLabel"_s);
    EXPECT_EQ(status.text(), u"Cancelled. Nothing was changed."_s);

    // Pressed on the switch and let go elsewhere: nothing is switched.
    const QRect cell = table().visualRect(table().model()->index(0, 0));
    QTest::mousePress(table().viewport(), Qt::LeftButton, {}, PluginTableDelegate::switchRect(cell).center());
    QTest::mouseRelease(table().viewport(), Qt::LeftButton, {}, cell.center() + QPoint(400, 0));
    settle();
    EXPECT_EQ(m_system.scripts.sources.size(), 3);
}

TEST_F(PluginTableTest, RepaintsButIgnoresInputDuringThePrompt)
{
    addPlugins({u"VST3/Foo.vst3"_s, u"VST3/Zeta.vst3"_s});
    launch();
    auto& field = named<QLineEdit>(window(), u"searchField"_s);
    bool hasPainted = false;
    QMenu* menu = window().menuBar()->actions().at(1)->menu();
    m_system.scripts.whileRunning = [&] {
        QTest::keyClicks(&field, u"zzz"_s);
        clickSwitch(1);
        QTest::mouseClick(&named(window(), u"scanButton"_s), Qt::LeftButton);
        QTest::keyClick(&table(), Qt::Key_Space);
        EXPECT_FALSE(QApplication::activePopupWidget()) << "its grab would keep the password from the prompt";
        QTest::keyClick(&window(), Qt::Key_E, Qt::AltModifier);
        EXPECT_FALSE(QApplication::activePopupWidget());
        QTest::keyClick(&window(), Qt::Key_M, Qt::ControlModifier);
        EXPECT_FALSE(window().isMinimized());
        menu->popup({}); // as by a screen reader
        QCoreApplication::sendPostedEvents();
        EXPECT_FALSE(QApplication::activePopupWidget());
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BusyCursor);
        hasPainted = !window().grab().isNull() && table().isEnabled();
        QTest::keyClick(&window(), Qt::Key_W, Qt::ControlModifier);
    };
    menu->popup({});
    table().model()->setData(table().model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    ASSERT_TRUE(waitFor([&] { return !*viewModel().isRunningScript; }));
    settle();
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    EXPECT_TRUE(hasPainted);
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(m_system.scripts.sources.size(), 1) << "nothing was started a second time";
    EXPECT_FALSE(window().isVisible()) << "closing the window still works";
    m_system.scripts.whileRunning = nullptr;
    window().show();
    search(u"zeta"_s);
    EXPECT_EQ(shownNames(), (QStringList{u"Zeta"_s})) << "afterwards everything works as before";
}

TEST_F(PluginTableTest, SaysWhyItIsEmpty)
{
    launch();
    const auto& reason = named<QLabel>(window(), u"noRowsHeading"_s);
    auto& clear = named(window(), u"clearTableFiltersButton"_s);
    EXPECT_EQ(reason.text(), u"No plugins found on this computer"_s);
    EXPECT_TRUE(reason.isVisible() && !clear.isVisible());
    addPlugins(2);
    quietly([this] { press(window(), u"scanButton"_s); });
    EXPECT_FALSE(reason.isVisible());
    search(u"zzz"_s);
    EXPECT_EQ(reason.text(), u"No plugins match the search"_s);
    viewModel().selectedFormats = QSet{PluginFormat::au};
    settle();
    EXPECT_EQ(reason.text(), u"No plugins match the search and the filters"_s);
    viewModel().searchText.clear();
    endSearchPause();
    EXPECT_EQ(reason.text(), u"No plugins match the filters"_s);
    press(window(), u"clearTableFiltersButton"_s);
    EXPECT_EQ(shownNames().size(), 2);
    EXPECT_EQ(focused(), u"pluginTable"_s);
}

TEST_F(PluginTableTest, TypedLettersGoToTheNextName)
{
    addPlugins({u"VST3/Alpha.vst3"_s, u"VST3/Beta.vst3"_s, u"VST3/Bravo.vst3"_s});
    addPlugins(100);
    addPlugins({u"VST3/Zeta.vst3"_s});
    launch();
    const auto pause = qScopeGuard(
        [before = QApplication::keyboardInputInterval()] { QApplication::setKeyboardInputInterval(before); });
    QApplication::setKeyboardInputInterval(60'000);
    press(window(), u"pluginTable"_s, Qt::Key_B);
    const auto current = [this] { return table().currentIndex().siblingAtColumn(1).data().toString(); };
    EXPECT_EQ(current(), u"Beta"_s);
    press(Qt::Key_B);
    EXPECT_EQ(current(), u"Bravo"_s) << "the same letter again";
    press(Qt::Key_B);
    press(Qt::Key_R);
    EXPECT_EQ(current(), u"Bravo"_s);
    press(Qt::Key_Space);
    EXPECT_TRUE(m_system.scripts.sources.isEmpty()) << "a space within a name switches nothing";
    QApplication::setKeyboardInputInterval(0);
    QTest::qWait(2);
    press(Qt::Key_Z);
    EXPECT_EQ(current(), u"Zeta"_s) << "beyond the first page";
    EXPECT_TRUE(viewModel().persistedSelections.isEmpty());
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"searchField"_s);
    table().setFocus();
    click(named<QWidget>(window(), u"searchBar"_s), {4, 4});
    EXPECT_EQ(focused(), u"searchField"_s);
}

TEST_F(PluginTableTest, LoadsTheNextPageAtTheLastRow)
{
    addPlugins(250);
    launch();
    EXPECT_EQ(footer(), u"Showing 100 of 250 plugins"_s);
    auto& loadAll = named(window(), u"loadAllButton"_s);
    const auto& hint = named<QLabel>(window(), u"keysHint"_s);
    EXPECT_TRUE(loadAll.isVisible() && !hint.isVisible());
    table().verticalScrollBar()->setValue(table().verticalScrollBar()->maximum() - 100);
    settle();
    EXPECT_EQ(footer(), u"Showing 100 of 250 plugins"_s) << "only the very last row asks";
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_Down, Qt::ControlModifier);
    settle();
    EXPECT_EQ(footer(), u"Showing 200 of 250 plugins"_s);
    click(loadAll);
    EXPECT_TRUE(!loadAll.isVisible() && hint.isVisible());
    EXPECT_EQ(hint.text(), u"⌘↑ Top · ⌘↓ Bottom"_s);
    QTest::keyClick(&table(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(table().currentIndex().row(), 0);
    search(u"Plugin 00"_s); // a hundred
    EXPECT_FALSE(hint.isVisible());
}

TEST_F(PluginTableTest, KeepsItsPositionAcrossAReload)
{
    addPlugins(250);
    launch();
    table().setFocus();
    viewModel().loadAllPages();
    settle();
    table().setCurrentIndex(table().model()->index(150, 1));
    table().scrollTo(table().model()->index(150, 1), QAbstractItemView::PositionAtCenter);
    settle();
    const int scroll = table().verticalScrollBar()->value();
    const QString name = table().currentIndex().data().toString();
    viewModel().refreshFromDatabase(); // cuts the list to its first page
    settle();
    EXPECT_EQ(table().verticalScrollBar()->value(), scroll);
    EXPECT_EQ(table().currentIndex().data().toString(), name);

    table().setCurrentIndex(table().model()->index(80, 1));
    search(u"plugin"_s);
    EXPECT_EQ(table().verticalScrollBar()->value(), 0) << "a new search starts at its first hit";
    EXPECT_EQ(table().currentIndex().row(), 80);
    table().verticalScrollBar()->setValue(500);
    click(window(), u"resetButton"_s);
    viewModel().showAllPlugins = true;
    settle();
    EXPECT_EQ(table().verticalScrollBar()->value(), 0) << "a reset as well";
    EXPECT_FALSE(table().currentIndex().isValid());
}

TEST_F(PluginTableTest, OpensManufacturerWebsitesByMouseAndKeyboard)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Foo.vst3",
                     infoPlist({{u"CFBundleIdentifier"_s, u"com.klang.foo"_s}}));
    addPlugins({u"VST3/Nobody.vst3"_s});
    launch();
    const QModelIndex maker = table().model()->index(0, 2);
    EXPECT_EQ(maker.data(), u"Klang"_s);
    click(*table().viewport(), table().visualRect(maker).topLeft() + QPoint(20, 17));
    click(*table().viewport(), table().visualRect(maker).topRight() + QPoint(-5, 17));
    table().setFocus();
    table().setCurrentIndex(maker);
    QTest::keyClick(&table(), Qt::Key_Return);
    table().setCurrentIndex(maker.siblingAtRow(1));
    QTest::keyClick(&table(), Qt::Key_Return);
    ASSERT_EQ(m_system.workspace.opened.size(), 2U) << "only clicks on a known name";
    EXPECT_EQ(m_system.workspace.opened[0], m_system.workspace.opened[1]);
    EXPECT_TRUE(m_system.workspace.opened[0].toString().contains(u"Klang"_s));
}

} // namespace orvanlite::test
