#include "shell/bulk/BulkActionsView.h"

#include "ShellFixture.h"
#include "operations/OperationsFixture.h"
#include "shell/bulk/BulkConfirmation.h"
#include "shell/bulk/BulkPluginList.h"
#include "shell/toolkit/ChipButton.h"
#include "shell/toolkit/ThemeController.h"

#include <QScrollBar>

namespace orvanlite::test {

class BulkActionsViewTest : public OperationsTest {
protected:
    BulkActionsViewTest() { m_system.appearance.reduced = true; }

    void add(const QString& name, PluginFormat format, bool isEnabled = true, const QString& version = {})
    {
        const QString path = m_root.at(u"/Library/") + name + rawValue(format) + version;
        const auto given = version.isEmpty() ? std::nullopt : std::optional(version);
        m_all.push_back({makeUuid(), name, {}, format, path, path, isEnabled, given, {}, {}});
    }
    void addMany(int count, bool isEnabled)
    {
        for (int i = 0; i < count; ++i)
            add(u"Plugin %1"_s.arg(i, 4, 10, QChar(u'0')), PluginFormat::vst3, isEnabled);
    }
    BulkActionsView& pane()
    {
        m_database.replaceAllPlugins(m_all);
        for (const AudioPlugin& each : m_all)
            model().persistedSelections.insert(each.id);
        model().refreshBulkPane();
        if (!m_pane) {
            m_pane = std::make_unique<BulkActionsView>(model(), m_confirmation, nullptr);
            m_pane->resize(900, 320);
            m_pane->show();
            m_pane->activateWindow();
        }
        settle();
        return *m_pane;
    }
    template <typename Widget = QAbstractButton>
    Widget& at(const QString& name)
    {
        return named<Widget>(*m_pane, name);
    }
    void click(const QString& name) { test::click(at(name)); }
    void clickRow(const QString& name) { test::click(*row(name), QPoint(40, 12)); }
    void clickChip(const QString& name, const QString& label) { test::click(*chip(name, label)); }
    BulkPluginList& list() { return at<BulkPluginList>(u"bulkPluginList"_s); }
    void scrollTo(int value)
    {
        list().verticalScrollBar()->setValue(value);
        settle();
    }
    [[nodiscard]] bool isAtEnd()
    {
        return list().verticalScrollBar()->value() == list().verticalScrollBar()->maximum();
    }
    [[nodiscard]] BulkPluginRow* row(const QString& name)
    {
        for (BulkPluginRow* each : list().builtRows()) {
            if (each->pluginName() == name)
                return each;
        }
        return nullptr;
    }
    [[nodiscard]] ChipButton* chip(const QString& name, const QString& label)
    {
        for (auto* each : row(name)->findChildren<ChipButton*>()) {
            if (each->isVisible() && each->label() == label)
                return each;
        }
        return nullptr;
    }
    [[nodiscard]] QString focusedRow() const
    {
        const auto* row = dynamic_cast<BulkPluginRow*>(QApplication::focusWidget());
        return row ? row->pluginName() : u"none"_s;
    }

    AudioPlugins m_all;
    BulkConfirmation m_confirmation;
    const ThemeController m_theme{m_system.appearance};
    std::unique_ptr<BulkActionsView> m_pane;
};

TEST_F(BulkActionsViewTest, AsksFromElevenPluginsOn)
{
    const std::tuple<QString, int, bool, std::optional<BulkAction>, int> rows[] = {
        {u"enableSelectedButton"_s, 10, false, {}, 1},
        {u"enableSelectedButton"_s, 11, false, BulkAction::enable, 0},
        {u"enableSelectedButton"_s, 11, true, {}, 1}, // nothing left to enable: an empty list is run
        {u"disableSelectedButton"_s, 11, true, BulkAction::disable, 0},
        {u"deleteSelectedButton"_s, 1, true, BulkAction::delete_, 0},
    };
    for (const auto& [button, count, isEnabled, asked, scripts] : rows) {
        SCOPED_TRACE(testing::Message() << qPrintable(button) << " " << count << " " << isEnabled);
        m_all.clear();
        model().clearSelection();
        m_confirmation.isShowing = false;
        m_confirmation.pendingAction.reset();
        m_system.scripts.sources.clear();
        m_system.scripts.failNext(u"User canceled."_s);
        addMany(count, isEnabled);
        pane();
        click(button);
        EXPECT_TRUE(*m_confirmation.isShowing == asked.has_value() && m_confirmation.pendingAction == asked);
        EXPECT_EQ(m_system.scripts.sources.size(), scripts);
        EXPECT_TRUE(!asked || std::ssize(m_confirmation.pendingPlugins) == count);
    }
}

TEST_F(BulkActionsViewTest, SwitchesVariantsAndFormats)
{
    add(u"Alpha"_s, PluginFormat::vst3);
    add(u"Alpha"_s, PluginFormat::au);
    add(u"beta"_s, PluginFormat::vst3);
    add(u"R&B"_s, PluginFormat::wavesBundle, true, u"V14 & V15"_s);
    add(u"R&B"_s, PluginFormat::wavesBundle);
    pane();
    EXPECT_TRUE(at(u"formatChipWaves"_s).isVisible() && !at(u"formatChipAAX"_s).isVisible());
    EXPECT_EQ(at<QLabel>(u"bulkCountLabel"_s).text(), u"5 plugin(s)"_s);
    EXPECT_EQ(at<QLabel>(u"bulkUniqueLabel"_s).text(), u"(3 unique)"_s);
    EXPECT_TRUE(chip(u"R&B"_s, u"V14 & V15"_s) && chip(u"R&B"_s, u"Waves"_s));
    QAccessibleInterface* item = QAccessible::queryAccessibleInterface(row(u"R&B"_s));
    EXPECT_TRUE(item->role() == QAccessible::ListItem && item->parent()->role() == QAccessible::List);
    EXPECT_EQ(item->text(QAccessible::Name), u"R&B"_s);
    EXPECT_TRUE(item->state().selectable && !item->state().selected);
    item->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    settle();
    EXPECT_TRUE(item->state().selected);
    expectNamedControls(*m_pane);
    clickChip(u"beta"_s, u"VST3"_s);
    EXPECT_EQ(chip(u"beta"_s, u"VST3"_s)->accessibleDescription(), u"off"_s);
    EXPECT_FALSE(row(u"beta"_s)->isMarked()) << "a chip is not its row";
    click(u"deleteSelectedButton"_s);
    EXPECT_EQ(m_confirmation.pendingPlugins.size(), 4U) << "active variants only";
    auto& vst3 = at(u"formatChipVST3"_s);
    EXPECT_EQ(vst3.accessibleDescription(), u"partly active"_s);
    EXPECT_TRUE(vst3.isChecked());
    vst3.setFocus();
    for (const bool isOn : {true, false}) {
        press(Qt::Key_Space);
        EXPECT_EQ(vst3.accessibleDescription(), isOn ? u"active"_s : u"off"_s);
        EXPECT_EQ(vst3.isChecked(), isOn);
        EXPECT_EQ(chip(u"beta"_s, u"VST3"_s)->isChecked(), isOn);
    }
    click(u"clearAllButton"_s);
    for (const QString& name : {u"enable"_s, u"disable"_s, u"delete"_s})
        EXPECT_FALSE(at(name + u"SelectedButton"_s).isEnabled()) << qPrintable(name);
}

TEST_F(BulkActionsViewTest, SelectsRowsAndRemovesThem)
{
    for (const QString& name : {u"Alpha"_s, u"Beta"_s, u"Gamma"_s})
        add(name, PluginFormat::clap);
    add(u"Alpha"_s, PluginFormat::aax);
    pane();
    auto& remove = at(u"removeFromListButton"_s);
    EXPECT_FALSE(remove.isVisible());
    clickRow(u"Alpha"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_TRUE(row(u"Alpha"_s)->isMarked() && row(u"Beta"_s)->isMarked());
    EXPECT_EQ(remove.text(), u"Remove 2 from list"_s);
    press(Qt::Key_Space);
    EXPECT_EQ(remove.text(), u"Remove 1 from list"_s);
    click(u"removeFromListButton"_s);
    EXPECT_FALSE(remove.isVisible());
    EXPECT_FALSE(row(u"Alpha"_s));
    EXPECT_EQ(model().persistedSelections.size(), 2);

    clickRow(u"Gamma"_s);
    EXPECT_TRUE(remove.isVisible());
    model().deselectPluginsByName(u"Gamma"_s);
    settle();
    EXPECT_FALSE(remove.isVisible()) << "a marked name has left the list by another way";
}

TEST_F(BulkActionsViewTest, WarnsOfWavesPlugins)
{
    add(u"wAVEsHELL1-VST3 14.0"_s, PluginFormat::vst3);
    add(u"H-Delay"_s, PluginFormat::wavesBundle, true, u"V15"_s);
    add(u"H-EQ"_s, PluginFormat::wavesBundle, false, u"V15"_s);
    pane();
    auto& warning = at(u"waveShellWarning"_s);
    auto& notice = at<QWidget>(u"wavesBundleNotice"_s);
    EXPECT_TRUE(warning.isVisible() && notice.isVisible());
    EXPECT_EQ(warning.accessibleName(), u"Remove Waves"_s);
    test::click(warning, QPoint(200, warning.height() / 2)); // on its text
    EXPECT_FALSE(warning.isVisible());
    EXPECT_EQ(model().persistedSelections.size(), 2);
    clickChip(u"H-Delay"_s, u"V15"_s);
    EXPECT_FALSE(notice.isVisible()) << "only a disabled one is left";
}

TEST_F(BulkActionsViewTest, BuildsOnlyTheRowsInView)
{
    addMany(5'000, true);
    pane();
    ASSERT_TRUE(isAtEnd() && row(u"Plugin 4999"_s)) << "a longer list scrolls to its last row";
    EXPECT_FALSE(row(u"Plugin 4999"_s)->isHighlighted()) << "reduced motion";
    scrollTo(list().verticalScrollBar()->maximum() / 2);
    scrollTo(0);
    ASSERT_TRUE(row(u"Plugin 0000"_s));
    int top = -1;
    for (const BulkPluginRow* each : list().builtRows()) {
        EXPECT_GT(each->y(), top);
        top = each->y() + each->height() - 2 * BulkPluginRow::kBleedY;
    }
    EXPECT_GE(top, list().viewport()->height() - 4);
    EXPECT_LT(m_pane->findChildren<QWidget*>().size(), 120);

    const QAccessibleInterface* spoken =
        QAccessible::queryAccessibleInterface(row(u"Plugin 0000"_s))->parent();
    ASSERT_EQ(spoken->childCount(), 5'000);
    for (const int position : {0, 3, 2'500, 4'999}) {
        QAccessibleInterface* item = spoken->child(position);
        EXPECT_EQ(item->text(QAccessible::Name), u"Plugin %1"_s.arg(position, 4, 10, QChar(u'0')));
        EXPECT_TRUE(item->role() == QAccessible::ListItem && spoken->indexOfChild(item) == position);
        EXPECT_EQ(spoken->childAt(item->rect().center().x(), item->rect().center().y()), item);
        item->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        settle();
        EXPECT_TRUE(item->state().selected);
    }
    spoken->child(4'999)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(focusedRow(), u"Plugin 4999"_s);
    press(Qt::Key_Up);
    press(Qt::Key_PageUp);
    EXPECT_LT(focusedRow(), u"Plugin 4998"_s);
    const QString kept = focusedRow();
    scrollTo(0);
    EXPECT_EQ(focusedRow(), kept) << "scrolling away leaves the keyboard where it is";
    press(Qt::Key_Home);
    for (int i = 0; i < 30; ++i)
        press(Qt::Key_Down);
    ASSERT_EQ(focusedRow(), u"Plugin 0030"_s);
    const QWidget& current = *row(u"Plugin 0030"_s);
    const QRect place(current.mapTo(list().viewport(), QPoint(0, 1)), current.size() - QSize(0, 2));
    EXPECT_TRUE(list().viewport()->rect().contains(place));
    press(Qt::Key_Space);
    EXPECT_TRUE(row(u"Plugin 0030"_s)->isMarked());

    model().deselectPluginsByName(u"Plugin 0030"_s);
    settle();
    EXPECT_EQ(focusedRow(), u"Plugin 0031"_s) << "the next one takes the place of the one that has gone";
    EXPECT_FALSE(row(u"Plugin 0031"_s)->isMarked());
}

TEST_F(BulkActionsViewTest, TabVisitsTheCurrentRowAndItsChips)
{
    addMany(200, true);
    add(u"Plugin 0003"_s, PluginFormat::au);
    pane();
    scrollTo(0);
    row(u"Plugin 0003"_s)->setFocus();
    const QString name = focused();
    QStringList stops;
    do {
        press(Qt::Key_Tab);
        stops.append(focused());
    } while (focused() != name && stops.size() < 20);
    EXPECT_EQ(
        stops.join(u' '),
        name +
            u"Chip0 %1Chip1 enableSelectedButton disableSelectedButton deleteSelectedButton formatChipAudioUnits "
            "formatChipVST3 clearAllButton %1"_s.arg(name));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_FALSE(chip(u"Plugin 0003"_s, u"VST3"_s)->isChecked());
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), u"Plugin 0004"_s);
}

TEST_F(BulkActionsViewTest, HighlightsOnlyWhatIsNew)
{
    m_system.appearance.reduced = false;
    addMany(40, true);
    pane();
    const auto highlighted = [&] {
        QStringList names;
        for (const BulkPluginRow* each : list().builtRows())
            names += each->isHighlighted() ? QStringList(each->pluginName()) : QStringList();
        return names;
    };
    EXPECT_TRUE(highlighted().contains(u"Plugin 0039"_s));
    scrollTo(0);
    EXPECT_TRUE(waitFor([&] { return highlighted().isEmpty(); }));
    scrollTo(list().verticalScrollBar()->maximum());
    EXPECT_TRUE(highlighted().isEmpty()) << "seen before";
    scrollTo(0);
    add(u"Plugin 0000 a"_s, PluginFormat::vst3);
    pane();
    EXPECT_TRUE(waitFor([&] { return isAtEnd(); }));

    const AudioPlugin last = m_all[39];
    model().deselectPluginsByName(last.name);
    settle();
    model().collectSelection({last.id});
    EXPECT_TRUE(waitFor([&] { return highlighted() == QStringList{last.name}; })) << "new again";
}

TEST_F(BulkActionsViewTest, WrapsChipsThatDoNotFit)
{
    for (int i = 0; i < 40; ++i)
        add(u"A name that is longer than any row of a narrow pane, and then some more of it"_s,
            PluginFormat::wavesBundle, true, u"V%1"_s.arg(i));
    pane();
    m_pane->resize(480, 400);
    settle();
    const BulkPluginRow& wide = *list().builtRows().front();
    QRegion occupied;
    for (const auto* each : wide.findChildren<ChipButton*>()) {
        EXPECT_TRUE(wide.rect().contains(each->geometry()));
        EXPECT_GE(each->width(), each->sizeHint().width());
        EXPECT_FALSE(occupied.intersects(each->geometry()));
        occupied += each->geometry();
    }
}

} // namespace orvanlite::test
