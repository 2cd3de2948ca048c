#include "ShellFixture.h"

#include <QScrollBar>

namespace orvanlite::test {

class PluginTableTest : public ShellTest {};

TEST_F(PluginTableTest, SortsAndSearches)
{
    addPlugins({u"VST3/Alpha.vst3"_s, u"VST/beta.vst"_s, u"VST/Gamma.vst"_s, u"Disabled/CLAP/delta.clap"_s});
    launch();
    EXPECT_EQ(shownNames(), (QStringList{u"Alpha"_s, u"beta"_s, u"delta"_s, u"Gamma"_s}));
    clickHeader(1);
    EXPECT_EQ(shownNames(), (QStringList{u"Gamma"_s, u"delta"_s, u"beta"_s, u"Alpha"_s}));
    clickHeader(0);
    EXPECT_EQ(shownNames().front(), u"delta"_s) << "disabled ones first";
    EXPECT_EQ((*viewModel().sortOrder)[1].key, PluginSortKey::name);
    EXPECT_EQ(table().header()->accessibleName(), u"Sort by Status, ascending"_s);
    QAccessibleInterface* header = QAccessible::queryAccessibleInterface(table().header());
    EXPECT_EQ(header->parent()->indexOfChild(header), 0) << "readers ignore it otherwise";
    EXPECT_EQ(header->parent()->child(1)->object(), &table());
    search(u"ETA"_s);
    EXPECT_EQ(shownNames(), QStringList{u"beta"_s});
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
    m_system.scripts.whileRunning = [&] {
        QTest::keyClicks(&field, u"zzz"_s);
        clickSwitch(1);
        QTest::mouseClick(&named(window(), u"scanButton"_s), Qt::LeftButton);
        QTest::keyClick(&table(), Qt::Key_Space);
        hasPainted = !window().grab().isNull() && table().isEnabled();
        QTest::keyClick(&window(), Qt::Key_W, Qt::ControlModifier);
    };
    clickSwitch(0);
    ASSERT_TRUE(waitFor([&] { return !*viewModel().isRunningScript; }));
    settle();
    EXPECT_TRUE(hasPainted);
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(m_system.scripts.sources.size(), 1) << "nothing was started a second time";
    EXPECT_FALSE(window().isVisible()) << "closing the window still works";
    m_system.scripts.whileRunning = nullptr;
    window().show();
    search(u"zeta"_s);
    EXPECT_EQ(shownNames(), (QStringList{u"Zeta"_s})) << "afterwards everything works as before";
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
