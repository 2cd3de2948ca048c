#include "shell/bulk/BulkActionsView.h"

#include "ShellFixture.h"
#include "operations/OperationsFixture.h"
#include "shell/bulk/BulkConfirmation.h"
#include "shell/bulk/BulkPluginList.h"
#include "shell/toolkit/ChipButton.h"
#include "shell/toolkit/ThemeController.h"

#include <QAccessible>
#include <QScrollBar>

namespace orvanlite::test {

/// The pane on its own, on a view model over a real catalogue.
class BulkActionsViewTest : public OperationsTest {
protected:
    BulkActionsViewTest() { m_system.appearance.reduced = true; }

    void add(const QString& name, PluginFormat format, bool isEnabled = true, const QString& version = {})
    {
        AudioPlugin plugin;
        plugin.id = makeUuid();
        plugin.name = name;
        plugin.format = format;
        plugin.isEnabled = isEnabled;
        plugin.originalPath = plugin.currentPath =
            m_root.at(u"/Library/") + name + rawValue(format) + version;
        if (!version.isEmpty())
            plugin.version = version;
        m_all.push_back(plugin);
    }
    void addMany(int count, bool isEnabled)
    {
        for (int i = 0; i < count; ++i)
            add(u"Plugin %1"_s.arg(i, 4, 10, QChar(u'0')), PluginFormat::vst3, isEnabled);
    }
    /// Selects all that was added and shows the pane.
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
    static void settle()
    {
        for (int turn = 0; turn < 4; ++turn)
            turnEventLoop();
    }
    template <typename Widget = QAbstractButton>
    Widget& at(const QString& name)
    {
        return named<Widget>(*m_pane, name);
    }
    void click(const QString& name)
    {
        QTest::mouseClick(&at(name), Qt::LeftButton);
        settle();
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        settle();
    }
    [[nodiscard]] BulkPluginRow* row(const QString& name)
    {
        for (BulkPluginRow* each : at<BulkPluginList>(u"bulkPluginList"_s).builtRows()) {
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
    [[nodiscard]] QStringList shown(const char* part)
    {
        QStringList texts;
        for (auto* each : at<QWidget>(QString::fromLatin1(part)).findChildren<ChipButton*>()) {
            if (each->isVisible())
                texts.append(each->label() + u' ' + each->accessibleDescription());
        }
        return texts;
    }
    [[nodiscard]] QString focused() const { return QApplication::focusWidget()->objectName(); }
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

TEST_F(BulkActionsViewTest, AsksOnlyFromElevenOn)
{
    struct Row {
        const char* button;
        int count;
        bool isEnabled;
        std::optional<BulkAction> asked;
        int scripts;
    };
    const Row rows[] = {
        {"enableSelectedButton", 10, false, {}, 1},
        {"enableSelectedButton", 11, false, BulkAction::enable, 0},
        {"enableSelectedButton", 11, true, {}, 1}, // nothing left to enable: an empty list is run
        {"disableSelectedButton", 10, true, {}, 1},
        {"disableSelectedButton", 11, true, BulkAction::disable, 0},
        {"deleteSelectedButton", 1, true, BulkAction::delete_, 0},
    };
    for (const Row& test : rows) {
        SCOPED_TRACE(testing::Message() << test.button << " " << test.count << " " << test.isEnabled);
        m_all.clear();
        model().clearSelection();
        m_confirmation.isShowing = false;
        m_confirmation.pendingAction.reset();
        m_system.scripts.sources.clear();
        m_system.scripts.failNext(u"User canceled."_s);
        addMany(test.count, test.isEnabled);
        pane();
        click(QString::fromLatin1(test.button));
        EXPECT_EQ(*m_confirmation.isShowing, test.asked.has_value());
        EXPECT_EQ(m_confirmation.pendingAction, test.asked);
        EXPECT_EQ(m_system.scripts.sources.size(), test.scripts);
        if (test.asked) {
            EXPECT_EQ(m_confirmation.pendingPlugins.size(), static_cast<std::size_t>(test.count));
        }
    }
}

TEST_F(BulkActionsViewTest, ActsOnTheVariantsThatAreOn)
{
    add(u"Alpha"_s, PluginFormat::vst3);
    add(u"Alpha"_s, PluginFormat::au, false);
    add(u"Beta"_s, PluginFormat::vst3, false);
    pane();
    QTest::mouseClick(chip(u"Alpha"_s, u"VST3"_s), Qt::LeftButton);
    click(u"deleteSelectedButton"_s);
    ASSERT_EQ(m_confirmation.pendingPlugins.size(), 2U);
    EXPECT_EQ(m_confirmation.pendingPlugins[0].format, PluginFormat::au);
    EXPECT_EQ(m_confirmation.pendingPlugins[1].name, u"Beta"_s);
    click(u"clearAllButton"_s);
    EXPECT_TRUE(model().persistedSelections.isEmpty());
    for (const char* name : {"enableSelectedButton", "disableSelectedButton", "deleteSelectedButton"})
        EXPECT_FALSE(at(QString::fromLatin1(name)).isEnabled()) << name;
    EXPECT_TRUE(shown("bulkFormatRow").isEmpty());
}

TEST_F(BulkActionsViewTest, SwitchesVariantsAndFormats)
{
    add(u"Alpha"_s, PluginFormat::vst3);
    add(u"Alpha"_s, PluginFormat::au);
    add(u"beta"_s, PluginFormat::vst3);
    add(u"R&B"_s, PluginFormat::wavesBundle, true, u"V14 & V15"_s);
    add(u"R&B"_s, PluginFormat::wavesBundle);
    add(u"Zeta"_s, PluginFormat::vst2);
    pane();
    EXPECT_EQ(shown("bulkFormatRow"),
              (QStringList{u"Audio Units active"_s, u"VST active"_s, u"VST3 active"_s, u"Waves active"_s}));
    EXPECT_EQ(at<QLabel>(u"bulkCountLabel"_s).text(), u"6 plugin(s)"_s);
    EXPECT_EQ(at<QLabel>(u"bulkUniqueLabel"_s).text(), u"(4 unique)"_s);
    EXPECT_TRUE(chip(u"R&B"_s, u"V14 & V15"_s) && chip(u"R&B"_s, u"Waves"_s));

    QTest::mouseClick(chip(u"beta"_s, u"VST3"_s), Qt::LeftButton);
    settle();
    EXPECT_EQ(chip(u"beta"_s, u"VST3"_s)->accessibleDescription(), u"off"_s);
    EXPECT_FALSE(chip(u"beta"_s, u"VST3"_s)->isChecked());
    EXPECT_FALSE(row(u"beta"_s)->isMarked()) << "a chip is not its row";
    auto& vst3 = at<ChipButton>(u"formatChipVST3"_s);
    EXPECT_EQ(vst3.accessibleDescription(), u"partly active"_s);
    EXPECT_TRUE(vst3.isChecked());
    vst3.setFocus();
    for (const auto& [wanted, isOn] : {std::pair{u"active"_s, true}, std::pair{u"off"_s, false}}) {
        press(Qt::Key_Space);
        EXPECT_EQ(vst3.accessibleDescription(), wanted);
        EXPECT_EQ(vst3.isChecked(), isOn);
        EXPECT_EQ(chip(u"beta"_s, u"VST3"_s)->isChecked(), isOn);
        EXPECT_EQ(chip(u"Alpha"_s, u"VST3"_s)->isChecked(), isOn);
    }
    EXPECT_TRUE(chip(u"Alpha"_s, u"Audio Units"_s)->isChecked());
}

TEST_F(BulkActionsViewTest, MarksRowsAndRemovesThem)
{
    for (const QString& name : {u"Alpha"_s, u"Beta"_s, u"Gamma"_s})
        add(name, PluginFormat::clap);
    add(u"Alpha"_s, PluginFormat::aax);
    pane();
    auto& remove = at(u"removeFromListButton"_s);
    EXPECT_FALSE(remove.isVisible());
    QTest::mouseClick(row(u"Alpha"_s), Qt::LeftButton, {}, QPoint(40, 12));
    settle();
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

    QTest::mouseClick(row(u"Gamma"_s), Qt::LeftButton, {}, QPoint(40, 12));
    settle();
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
    EXPECT_EQ(
        at<QLabel>(u"waveShellWarningText"_s).text(),
        u"WaveShell plugins are containers for all Waves plugins. Disabling a WaveShell will disable ALL "
        "Waves plugins for that format."_s);
    EXPECT_EQ(at<QLabel>(u"wavesBundleNoticeText"_s).text(),
              u"Disabling a Waves plugin moves its .bundle file, which disables it across <b>all formats</b> "
              "(AAX, AU, VST, VST3) and all installed versions simultaneously."_s);
    QTest::mouseClick(&warning, Qt::LeftButton, {}, QPoint(200, warning.height() / 2)); // on its text
    settle();
    EXPECT_FALSE(warning.isVisible());
    EXPECT_EQ(model().persistedSelections.size(), 2);
    QTest::mouseClick(chip(u"H-Delay"_s, u"V15"_s), Qt::LeftButton);
    settle();
    EXPECT_FALSE(notice.isVisible()) << "only a disabled one is left";
}

TEST_F(BulkActionsViewTest, BuildsOnlyTheRowsInView)
{
    addMany(5'000, true);
    pane();
    auto& list = at<BulkPluginList>(u"bulkPluginList"_s);
    EXPECT_EQ(list.verticalScrollBar()->value(), list.verticalScrollBar()->maximum())
        << "it has grown: the last one is in view";
    EXPECT_TRUE(row(u"Plugin 4999"_s));
    list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum() / 2);
    list.verticalScrollBar()->setValue(0);
    ASSERT_TRUE(row(u"Plugin 0000"_s));
    int top = -1;
    for (BulkPluginRow* each : list.builtRows()) {
        EXPECT_GT(each->y(), top);
        top = each->y() + each->height() - 2 * BulkPluginRow::kBleedY;
    }
    EXPECT_GE(top, list.viewport()->height() - 4);
    EXPECT_LT(m_pane->findChildren<QWidget*>().size(), 120);

    row(u"Plugin 0000"_s)->setFocus();
    press(Qt::Key_End);
    EXPECT_EQ(focusedRow(), u"Plugin 4999"_s);
    press(Qt::Key_Up);
    press(Qt::Key_PageUp);
    EXPECT_LT(focusedRow(), u"Plugin 4998"_s);
    const QString kept = focusedRow();
    list.verticalScrollBar()->setValue(0);
    EXPECT_EQ(focusedRow(), kept) << "scrolling away leaves the keyboard where it is";
    press(Qt::Key_Home);
    for (int i = 0; i < 30; ++i)
        press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), u"Plugin 0030"_s);
    const QRect place(row(u"Plugin 0030"_s)->mapTo(list.viewport(), QPoint(0, 1)),
                      row(u"Plugin 0030"_s)->size() - QSize(0, 2));
    EXPECT_TRUE(list.viewport()->rect().contains(place));
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
    at<BulkPluginList>(u"bulkPluginList"_s).verticalScrollBar()->setValue(0);
    QStringList order;
    at(u"enableSelectedButton"_s).setFocus();
    for (int i = 0; i < 8; ++i) {
        order.append(focused());
        press(Qt::Key_Tab);
    }
    row(u"Plugin 0003"_s)->setFocus();
    const QString name = row(u"Plugin 0003"_s)->objectName();
    EXPECT_EQ(order.mid(0, 6),
              (QStringList{u"enableSelectedButton"_s, u"disableSelectedButton"_s, u"deleteSelectedButton"_s,
                           u"formatChipAudioUnits"_s, u"formatChipVST3"_s, u"clearAllButton"_s}));
    EXPECT_TRUE(order[6].startsWith(u"bulkRow"_s) && order[7] == order[6] + u"Chip0"_s)
        << qPrintable(order.join(u", "_s));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), name + u"Chip0"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), name + u"Chip1"_s);
    press(Qt::Key_Space);
    EXPECT_FALSE(chip(u"Plugin 0003"_s, u"VST3"_s)->isChecked());
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"enableSelectedButton"_s) << "behind the last chip the list is left";
    press(Qt::Key_Backtab);
    EXPECT_EQ(focused(), name + u"Chip1"_s);
    press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), u"Plugin 0004"_s);
}

TEST_F(BulkActionsViewTest, HighlightsOnlyWhatIsNew)
{
    m_system.appearance.reduced = false;
    addMany(40, true);
    pane();
    auto& list = at<BulkPluginList>(u"bulkPluginList"_s);
    const auto highlighted = [&] {
        QStringList names;
        for (BulkPluginRow* each : list.builtRows()) {
            if (each->isHighlighted())
                names.append(each->pluginName());
        }
        return names;
    };
    EXPECT_TRUE(highlighted().contains(u"Plugin 0039"_s)) << qPrintable(highlighted().join(u','));
    list.verticalScrollBar()->setValue(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return highlighted().isEmpty(); }, 20'000));
    list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
    settle();
    EXPECT_TRUE(highlighted().isEmpty()) << "seen before";
    list.verticalScrollBar()->setValue(0);
    add(u"Plugin 0000 a"_s, PluginFormat::vst3);
    pane();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return list.verticalScrollBar()->value() == list.verticalScrollBar()->maximum(); }, 20'000));

    // It comes again under its old name: an arrival, the others are not.
    const AudioPlugin last = m_all[39];
    model().deselectPluginsByName(last.name);
    settle();
    model().collectSelection({last.id});
    settle();
    EXPECT_TRUE(QTest::qWaitFor([&] { return highlighted() == QStringList{last.name}; }, 20'000));
}

TEST_F(BulkActionsViewTest, StandsStillForReducedMotion)
{
    addMany(40, true);
    pane();
    auto& list = at<BulkPluginList>(u"bulkPluginList"_s);
    for (BulkPluginRow* each : list.builtRows())
        EXPECT_FALSE(each->isHighlighted());
    list.verticalScrollBar()->setValue(0);
    add(u"Zeta"_s, PluginFormat::clap);
    pane();
    EXPECT_EQ(list.verticalScrollBar()->value(), list.verticalScrollBar()->maximum());
    EXPECT_TRUE(row(u"Zeta"_s));
}

TEST_F(BulkActionsViewTest, ReadsRowsAsItemsOfAList)
{
    add(u"R&B"_s, PluginFormat::vst3);
    pane();
    QAccessibleInterface* item = QAccessible::queryAccessibleInterface(row(u"R&B"_s));
    EXPECT_EQ(item->role(), QAccessible::ListItem);
    EXPECT_EQ(item->parent()->role(), QAccessible::List);
    EXPECT_EQ(item->text(QAccessible::Name), u"R&B"_s);
    EXPECT_TRUE(item->state().selectable && !item->state().selected);
    item->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    settle();
    EXPECT_TRUE(item->state().selected);
    for (const auto* button : m_pane->findChildren<QAbstractButton*>()) {
        if (!button->isVisible())
            continue;
        QAccessibleInterface* control =
            QAccessible::queryAccessibleInterface(const_cast<QAbstractButton*>(button));
        EXPECT_FALSE(control->text(QAccessible::Name).isEmpty() || button->objectName().isEmpty());
    }
}

TEST_F(BulkActionsViewTest, WrapsWhatDoesNotFit)
{
    for (int i = 0; i < 40; ++i)
        add(u"A name that is longer than any row of a narrow pane, and then some more of it"_s,
            PluginFormat::wavesBundle, true, u"V%1"_s.arg(i));
    add(u"B"_s, PluginFormat::vst3);
    pane();
    m_pane->resize(480, 400);
    settle();
    const QRect visible = row(u"B"_s)->parentWidget()->rect();
    BulkPluginRow* wide = m_pane->findChild<BulkPluginList*>()->builtRows().front();
    EXPECT_GT(wide->height(), 2 * row(u"B"_s)->height());
    QList<QRect> places;
    for (auto* each : wide->findChildren<ChipButton*>()) {
        EXPECT_TRUE(wide->rect().contains(each->geometry()) && visible.contains(wide->geometry()));
        EXPECT_GE(each->width(), each->sizeHint().width()) << "no chip is cut";
        for (const QRect& other : places)
            EXPECT_FALSE(other.intersects(each->geometry()));
        places.append(each->geometry());
    }
    EXPECT_EQ(places.size(), 40);
}
} // namespace orvanlite::test
