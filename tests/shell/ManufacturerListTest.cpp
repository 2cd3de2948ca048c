#include "ShellFixture.h"

#include "shell/sidebar/ManufacturerList.h"
#include "shell/sidebar/ManufacturerTable.h"

#include <QAbstractItemModelTester>
#include <QScrollBar>
#include <QSignalSpy>

namespace orvanlite::test {

class ManufacturerListTest : public ShellTest {
protected:
    void SetUp() override
    {
        launch();
        m_list = std::make_unique<ManufacturerList>(viewModel(), m_system.platform.workspace, nullptr);
        m_list->resize(230, 400);
        m_list->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_list.get()));
        QObject::connect(m_list.get(), &ManufacturerList::manufacturerClicked, m_list.get(),
                         [this](const QString& name) { m_clicked.append(name); });
    }
    void show(const QStringList& makers)
    {
        viewModel().allManufacturers = makers;
        settle();
    }
    [[nodiscard]] ManufacturerTable& makers()
    {
        return named<ManufacturerTable>(*m_list, u"manufacturerTable"_s);
    }
    [[nodiscard]] QModelIndex at(int row, int column = 0) { return makers().model()->index(row, column); }

    std::unique_ptr<ManufacturerList> m_list;
    QStringList m_clicked;
};

TEST_F(ManufacturerListTest, FiltersAndOpensWebsitesByMouseAndKeyboard)
{
    const QAbstractItemModelTester tester(makers().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    show({u"Arturia"_s, u"FabFilter"_s, u"Klang"_s});
    EXPECT_EQ(makers().verticalScrollBar()->maximum(), 0) << "as high as its rows";
    click(makers(), 1);
    click(makers(), 1, 1);
    QTest::mousePress(makers().viewport(), Qt::LeftButton, {}, makers().visualRect(at(0)).center());
    QTest::mouseRelease(makers().viewport(), Qt::LeftButton, {}, makers().visualRect(at(2)).center());
    EXPECT_EQ(m_clicked, (QStringList{u"FabFilter"_s})) << "released on another row";
    EXPECT_TRUE(viewModel().selectedManufacturers->isEmpty()) << "the list only reports the click";

    viewModel().selectedManufacturers = {u"FabFilter"_s};
    settle();
    const auto* cells = QAccessible::queryAccessibleInterface(&makers())->tableInterface();
    EXPECT_EQ(at(1).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_TRUE(cells->cellAt(1, 0)->state().checked && !cells->cellAt(0, 0)->state().checked);
    EXPECT_EQ(cells->cellAt(1, 0)->text(QAccessible::Name), u"FabFilter"_s);
    EXPECT_EQ(cells->cellAt(1, 1)->text(QAccessible::Name), u"Visit FabFilter website"_s);

    auto& field = named<QLineEdit>(*m_list, u"manufacturerSearchField"_s);
    auto& clear = named(*m_list, u"clearManufacturerSearchButton"_s);
    EXPECT_FALSE(clear.isVisible());
    field.setFocus();
    QTest::keyClicks(&field, u"A"_s);
    settle();
    QTest::keyClick(&field, Qt::Key_Tab); // the clear button
    QTest::keyClick(&clear, Qt::Key_Tab);
    EXPECT_TRUE(makers().hasFocus());
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Space, Qt::Key_Right, Qt::Key_Space,
                              Qt::Key_Return, Qt::Key_Down, Qt::Key_Enter, Qt::Key_Left, Qt::Key_Space})
        QTest::keyClick(&makers(), key);
    EXPECT_EQ(m_clicked.mid(1), (QStringList{u"FabFilter"_s, u"Klang"_s}));
    QString hosts;
    for (const QUrl& url : m_system.workspace.opened)
        hosts += url.host().section(u'.', -2, -2) + u' ';
    EXPECT_EQ(hosts, u"fabfilter fabfilter fabfilter duckduckgo "_s);
    QTest::keyClick(&makers(), Qt::Key_Tab);
    EXPECT_FALSE(makers().hasFocus());

    spoken(field).setText(QAccessible::Value, u"Azz"_s);
    settle();
    EXPECT_EQ(*viewModel().manufacturerSearchText, u"Azz"_s);
    EXPECT_TRUE(named<QLabel>(*m_list, u"noManufacturersLabel"_s).isVisible() && !makers().isVisible());
    click(clear);
    EXPECT_TRUE(field.text().isEmpty() && field.hasFocus() && !clear.isVisible());
    viewModel().manufacturerSearchText = u"fab"_s;
    settle();
    EXPECT_EQ(field.text(), u"fab"_s);
    EXPECT_EQ(at(0).data(), u"FabFilter"_s);
}

TEST_F(ManufacturerListTest, KeepsItsPositionInALongList)
{
    QStringList many;
    for (int i = 0; i < 3000; ++i)
        many.append(u"Maker %1"_s.arg(i, 4, 10, QChar(u'0')));
    show(many);
    EXPECT_EQ(makers().height(), 200);
    makers().setCurrentIndex(at(1500, 1));
    const int scroll = makers().verticalScrollBar()->value() + 37;
    makers().verticalScrollBar()->setValue(scroll);
    QSignalSpy resets(makers().model(), &QAbstractItemModel::modelReset);
    show(many);
    EXPECT_EQ(resets.size(), 0) << "a reset would move screen readers off their cell";
    many.append(u"Newcomer"_s);
    show(many);
    EXPECT_EQ(makers().currentIndex(), at(1500, 1));
    EXPECT_EQ(makers().verticalScrollBar()->value(), scroll);
}

} // namespace orvanlite::test
