#include "ShellFixture.h"
#include "operations/Detach.h"
#include "operations/OperationsFixture.h"
#include "profiles/ProfileManager.h"
#include "shell/bulk/BulkOperations.h"
#include "shell/sidebar/ManufacturerTable.h"
#include "shell/sidebar/SidebarButton.h"
#include "shell/sidebar/SidebarRules.h"
#include "shell/sidebar/SidebarTitle.h"
#include "shell/sidebar/SidebarView.h"
#include "shell/toolkit/FileOpenPanel.h"
#include "shell/toolkit/FileSavePanel.h"
#include "shell/toolkit/QuestionBox.h"
#include "shell/toolkit/ThemeController.h"

#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace orvanlite::test {

class SidebarTest : public OperationsTest {
protected:
    SidebarTest() { m_system.appearance.reduced = true; }

    SidebarView& sidebar()
    {
        if (!m_sidebar) {
            const Services services{m_system.platform, model(), m_profiles, m_log, m_savePanel, m_openPanel};
            const auto act = [this](BulkAction action, std::optional<PluginFormat> format) {
                m_passed.append(format ? rawValue(*format) : u"all"_s);
                detach(action == BulkAction::enable ? enableAllForFormat(&model(), format)
                                                    : disableAllForFormat(&model(), format));
            };
            m_sidebar = std::make_unique<SidebarView>(services, act, nullptr);
            m_sidebar->resize(250, 700);
            m_sidebar->show();
            m_sidebar->activateWindow();
        }
        settle();
        return *m_sidebar;
    }
    SidebarView& filled(int count = 20)
    {
        fill(count);
        model().refreshAllState();
        return sidebar();
    }
    template <typename Widget = QWidget>
    Widget& at(const QString& name)
    {
        return named<Widget>(*m_sidebar, name);
    }
    void click(const QString& name) { test::click(*m_sidebar, name); }
    void clickMaker(const QString& name)
    {
        auto& table = at<ManufacturerTable>(u"manufacturerTable"_s);
        test::click(table,
                    table.model()->match(table.model()->index(0, 0), Qt::DisplayRole, name).at(0).row());
    }
    void open(const QStringList& sections)
    {
        for (const QString& each : sections) {
            settle();
            click(each + u"Header"_s);
        }
    }
    /// Names of the open sections, or labels of the selected rows.
    [[nodiscard]] QString checked(bool areHeaders)
    {
        QStringList all;
        for (const auto* each : m_sidebar->findChildren<SidebarButton*>()) {
            const bool isHeader = each->objectName().endsWith(u"Header"_s);
            if (isHeader == areHeaders && each->isChecked() && each->isVisible())
                all.append(isHeader ? each->objectName().chopped(6) : each->label());
        }
        return all.join(u' ');
    }
    [[nodiscard]] QString openSections() { return checked(true); }
    [[nodiscard]] QuestionBox* question() const { return m_sidebar->findChild<QuestionBox*>(); }
    void answer(const QString& button) { test::click(*question(), button); }

    ProfileManager m_profiles{m_system.platform};
    QWidget m_host;
    FileSavePanel m_savePanel{m_host, {}};
    FileOpenPanel m_openPanel{m_host, {}};
    QStringList m_passed; ///< to the operations on a format
    const ThemeController m_theme{m_system.appearance};
    std::unique_ptr<SidebarView> m_sidebar;
};

TEST(SidebarRulesTest, NamesTheActionsByTheFilters)
{
    using enum PluginFormat;
    const PluginFilter both{.formats = {clap}, .manufacturers = {u"%1"_s}};
    const std::tuple<PluginFilter, QString, QString, QString> rows[] = {
        {{.searchText = u"x"_s}, u"All"_s, {}, u"of any active filters."_s},
        {{.formats = {vst3}}, u"All VST3"_s, u"VST3"_s, u" by: VST3."_s},
        {{.formats = {au, aax}}, u"Filtered"_s, u"AAX, Audio Units"_s, u" by: AAX, Audio Units."_s},
        {{.manufacturers = {u"b"_s, u"A"_s}}, u"Filtered"_s, u"A, b"_s, u" by: A, b."_s},
        {both, u"Filtered"_s, u"CLAP · %1"_s, u" by: CLAP + %1."_s},
        {{.manufacturers = {u"C"_s, u"a"_s, u"B"_s}}, u"Filtered"_s, u"B +2 more"_s, u" by: B, C, a."_s},
    };
    for (const auto& [filter, label, summary, end] : rows) {
        SCOPED_TRACE(qPrintable(summary));
        EXPECT_EQ(enableDisableButtonLabel(BulkAction::delete_, filter), u"Delete "_s + label);
        EXPECT_EQ(filterSummary(filter), summary);
        const QString question = sidebarWarningMessage(BulkAction::enable, {}, filter);
        EXPECT_TRUE(question.endsWith(end)) << qPrintable(question);
    }
    AudioPlugins all(3);
    all[0].isEnabled = true;
    all[1].isEnabled = all[2].isEnabled = false;
    using enum BulkAction;
    const QString everything =
        u"This will %1 plugins across every format and manufacturer, regardless of any active filters."_s;
    EXPECT_EQ(sidebarWarningMessage(enable, all, {}), everything.arg(u"enable ALL 2 disabled"_s));
    EXPECT_EQ(sidebarWarningMessage(disable, all, {}), everything.arg(u"disable ALL 1 enabled"_s));
    const QString deletion = u"⚠️ This will PERMANENTLY DELETE 3 plugins %1. This cannot be undone!"_s;
    EXPECT_EQ(sidebarWarningMessage(delete_, all, {}), deletion.arg(u"from your system"_s));
    EXPECT_EQ(sidebarWarningMessage(delete_, all, {.formats = {vst3}}), deletion.arg(u"filtered by: VST3"_s));
}

TEST_F(SidebarTest, ClicksChangeFiltersAndTable)
{
    using enum PluginFormat;
    filled();
    open({u"formats"_s, u"manufacturers"_s});
    const QString all = u"All Plugins"_s;
    const QString odd = u"Odd"_s;
    const QString even = u"Even"_s;
    // What is clicked, then the filters, whether the table is visible, the selected rows and the reloads.
    const std::tuple<QString, QSet<PluginFormat>, QSet<QString>, bool, QString, int> steps[] = {
        {u"allPluginsButton"_s, {}, {}, true, all, 2},
        {u"allPluginsButton"_s, {}, {}, false, {}, 0},
        {u"formatRowVST3"_s, {vst3}, {}, true, u"VST3"_s, 2},
        {u"formatRowVST3"_s, {}, {}, false, {}, 2},
        {u"formatRowVST3"_s, {vst3}, {}, true, u"VST3"_s, 2},
        {u"formatRowCLAP"_s, {vst3, clap}, {}, true, u"VST3 CLAP"_s, 2},
        {u"allPluginsButton"_s, {}, {}, true, all, 2},
        {odd, {}, {odd}, true, all, 2},
        {odd, {}, {}, false, {}, 2},
        {odd, {}, {odd}, true, all, 2},
        {u"formatRowCLAP"_s, {clap}, {odd}, true, u"CLAP"_s, 2},
        {u"formatRowCLAP"_s, {}, {odd}, true, all, 2},
        {u"formatRowCLAP"_s, {clap}, {odd}, true, u"CLAP"_s, 2},
        {odd, {clap}, {}, true, u"CLAP"_s, 2},
        {even, {clap}, {even}, true, u"CLAP"_s, 2},
        {u"clearManufacturersButton"_s, {clap}, {}, false, u"CLAP"_s, 2},
        {even, {clap}, {even}, true, u"CLAP"_s, 2},
        {u"clearFiltersButton"_s, {}, {}, true, all, 4},
    };
    for (const auto& [target, formats, makers, showsTable, chosen, reloads] : steps) {
        SCOPED_TRACE(qPrintable(target + u" -> "_s + chosen));
        model().activeProfile = PluginProfile{};
        settle();
        EXPECT_FALSE(at(u"actionsSection"_s).isVisible() || at(u"sidebarDivider"_s).isVisible());
        const int before = countPosts();
        if (target == odd || target == even)
            clickMaker(target);
        else
            click(target);
        EXPECT_EQ(*model().selectedFormats, formats);
        EXPECT_EQ(*model().selectedManufacturers, makers);
        EXPECT_EQ(*model().showAllPlugins, showsTable);
        EXPECT_EQ(checked(false), chosen);
        EXPECT_EQ(openSections(), (showsTable ? u"actions "_s : u""_s) + u"formats manufacturers"_s);
        EXPECT_EQ(countPosts() - before, reloads);
        EXPECT_FALSE(model().activeProfile->has_value());
        EXPECT_TRUE(at(u"sidebarDivider"_s).isVisible());
        EXPECT_EQ(at(u"filterBar"_s).isVisible(), !(formats.isEmpty() && makers.isEmpty()));
    }
}

TEST_F(SidebarTest, TabVisitsItsRowsFromTopToBottom)
{
    m_log.log(u"A"_s, u"VST3"_s, ActivityAction::enabled);
    filled();
    model().selectedManufacturers = {u"Odd"_s};
    model().showAllPlugins = true;
    open({u"actions"_s, u"formats"_s, u"manufacturers"_s, u"recent"_s});
    at(u"allPluginsButton"_s).setFocus();
    QStringList stops;
    do {
        const QWidget* stop = QApplication::focusWidget();
        const auto* button = qobject_cast<const SidebarButton*>(stop);
        const QString count = button ? button->accessibleDescription() : QString();
        stops.append(count.isEmpty() ? focused() : focused() + u' ' + count);
        EXPECT_TRUE(m_sidebar->childAt(stop->mapTo(m_sidebar.get(), QPoint(1, 1)))) << qPrintable(focused());
        press(Qt::Key_Tab);
    } while (focused() != u"allPluginsButton"_s && stops.size() < 40);
    EXPECT_EQ(
        stops.join(u'\n'),
        u"allPluginsButton 20\nclearFiltersButton\nprofilesHeader 0\nactionsHeader\nenableFilteredButton\n"
        "disableFilteredButton\ndeleteFilteredButton\nformatsHeader\nformatRowAudioUnits 0\n"
        "formatRowVST3 10\nformatRowVST 0\nformatRowAAX 0\nformatRowCLAP 10\nformatRowWaves 0\n"
        "manufacturersHeader\nclearManufacturersButton\nmanufacturerSearchField\nmanufacturerTable\n"
        "statisticsHeader\nlaunchAtLoginSwitch\nrecentHeader 1\nclearActivityButton\nactivityLogList"_s);
    EXPECT_EQ(at(u"clearFiltersButton"_s).toolTip(), u"Clear all filters"_s);
    EXPECT_EQ(at<SidebarButton>(u"deleteFilteredButton"_s).label(), u"Delete Filtered"_s);
    for (const auto& [label, count] :
         {std::pair(u"Total"_s, u"20"_s), {u"Enabled"_s, u"18"_s}, {u"Disabled"_s, u"2"_s}})
        EXPECT_EQ(at<QLabel>(u"statistics"_s + label).text(), count) << qPrintable(label);
}

TEST_F(SidebarTest, KeepsTheFocusWhenAControlGoes)
{
    m_log.log(u"A"_s, u"VST3"_s, ActivityAction::enabled);
    filled();
    model().selectedManufacturers = {u"Odd"_s};
    model().showAllPlugins = true;
    open({u"actions"_s, u"formats"_s, u"recent"_s});
    const auto loses = [this](const QString& name, const std::function<void()>& change) {
        at(name).setFocus();
        EXPECT_EQ(focused(), name);
        change();
        settle();
        EXPECT_FALSE(at(name).isVisible());
        return focused();
    };
    const auto select = [this] {
        model().persistedSelections.insert(model().displayedPlugins->front().id);
        model().refreshBulkPane();
    };
    EXPECT_EQ(loses(u"enableFilteredButton"_s, select), u"formatsHeader"_s);
    const auto pressSpace = [] { press(Qt::Key_Space); };
    EXPECT_EQ(loses(u"clearManufacturersButton"_s, pressSpace), u"manufacturersHeader"_s);
    EXPECT_FALSE(at(u"invertSelectionButton"_s).isVisible());
    model().selectedManufacturers = {u"Odd"_s};
    settle();
    press(*m_sidebar, u"invertSelectionButton"_s);
    EXPECT_EQ(model().persistedSelections.size(), 10) << "all that is not filtered";
    const auto clear = [this] { model().clearSelection(); };
    EXPECT_EQ(loses(u"invertSelectionButton"_s, clear), u"manufacturersHeader"_s);
    EXPECT_EQ(loses(u"clearFiltersButton"_s, pressSpace), u"allPluginsButton"_s);
    EXPECT_EQ(loses(u"clearActivityButton"_s, [this] { m_log.clear(); }), u"recentHeader"_s);
    EXPECT_EQ(loses(u"formatRowVST3"_s, [this] { model().resetView(); }), u"formatsHeader"_s);
    EXPECT_EQ(openSections(), QString());
    m_database.replaceAllPlugins({});
    EXPECT_EQ(loses(u"manufacturersHeader"_s, [this] { model().refreshAllState(); }), u"formatsHeader"_s);
    EXPECT_EQ(at<SidebarButton>(u"formatRowVST3"_s).count(), u"0"_s);
}

TEST_F(SidebarTest, ActsOnFilteredPluginsAfterAQuestion)
{
    for (const QString& each : {u"VST3/A.vst3"_s, u"VST3/B.vst3"_s, u"CLAP/C.clap"_s})
        m_root.addFile(u"/Library/Audio/Plug-Ins/"_s + each);
    scan();
    sidebar();
    click(u"formatsHeader"_s);
    click(u"formatRowVST3"_s);
    click(u"disableFilteredButton"_s);
    ASSERT_TRUE(question());
    EXPECT_EQ(question()->windowTitle(), u"Disable All VST3 Plugins?"_s);
    EXPECT_EQ(question()->message(), u"This will disable 2 plugins filtered by: VST3."_s);
    EXPECT_TRUE(named<QPushButton>(*question(), u"cancelButton"_s).isDefault());
    EXPECT_FALSE(qobject_cast<QMessageBox*>(question())) << "a native one would choose its own default";
    answer(u"cancelButton"_s);
    EXPECT_TRUE(m_system.scripts.sources.isEmpty());

    m_system.scripts.whileRunning = [this] { // accessibility actions bypass the input gate
        at<QAbstractButton>(u"deleteFilteredButton"_s).click();
        EXPECT_FALSE(question() && question()->isVisible());
    };
    click(u"disableFilteredButton"_s);
    EXPECT_EQ(named(*question(), u"confirmButton"_s).text(), u"Disable All VST3"_s);
    answer(u"confirmButton"_s);
    const QStringList disabled{u"A Disabled"_s, u"B Disabled"_s, u"C Enabled"_s};
    EXPECT_TRUE(waitFor([&] { return states() == disabled && !*model().isRunningScript; }));

    m_system.scripts.whileRunning = nullptr;
    click(u"clearFiltersButton"_s);
    click(u"enableFilteredButton"_s);
    EXPECT_EQ(question()->windowTitle(), u"Enable All Plugins?"_s);
    answer(u"confirmButton"_s);
    EXPECT_TRUE(waitFor([&] { return !states().join(u' ').contains(u"Disabled"_s); }));
    settle();
    click(u"formatRowCLAP"_s);
    click(u"deleteFilteredButton"_s);
    answer(u"confirmButton"_s);
    EXPECT_TRUE(waitFor([&] { return states().size() == 2 && !*model().isRunningScript; }));
    settle();
    EXPECT_EQ(at<SidebarButton>(u"formatRowCLAP"_s).count(), u"0"_s);
    EXPECT_EQ(at<SidebarButton>(u"recentHeader"_s).count(), u"5"_s);
    EXPECT_EQ(m_passed, (QStringList{u"VST3"_s, u"all"_s}));
}

TEST_F(SidebarTest, ScrollsTheActionsToTheTopAndAnimatesItsTitle)
{
    m_system.appearance.reduced = false;
    filled(40);
    m_sidebar->resize(250, 420);
    open({u"formats"_s, u"manufacturers"_s, u"recent"_s});
    auto& column = at<QScrollArea>(u"sidebarColumn"_s);
    EXPECT_TRUE(waitFor([&] { return column.verticalScrollBar()->maximum() > 0; }));
    EXPECT_GE(column.height(), 100);
    model().showAllPlugins = true;
    model().selectedManufacturers = {u"Odd"_s};
    settle();
    column.verticalScrollBar()->setValue(column.verticalScrollBar()->maximum());
    at(u"formatRowCLAP"_s).setFocus();
    press(Qt::Key_Space);
    EXPECT_TRUE(waitFor([&] {
        return at(u"actionsSection"_s).mapTo(column.viewport(), QPoint()).y() == 0 &&
               !at(u"statisticsView"_s).isVisible() && !at(u"activityLogView"_s).isVisible();
    }));
    EXPECT_EQ(openSections(), u"actions formats manufacturers"_s);
    EXPECT_EQ(focused(), u"formatRowCLAP"_s);
    click(u"statisticsHeader"_s);
    at(u"formatRowVST3"_s).setFocus();
    click(u"formatsHeader"_s);
    EXPECT_TRUE(waitFor([&] { return !at(u"formatRowVST3"_s).isVisible(); }));
    EXPECT_TRUE(waitFor([&] { return !at(u"statisticsTotal"_s).visibleRegion().isEmpty(); }));

    const auto turns = [this] { return at<SidebarTitle>(u"sidebarTitle"_s).isTurning(); };
    EXPECT_TRUE(waitFor(turns));
    m_sidebar->showMinimized();
    EXPECT_TRUE(waitFor([&] { return !turns(); })) << "hidden";
    m_sidebar->showNormal();
    EXPECT_TRUE(waitFor(turns));
    m_system.appearance.reduced = true;
    m_system.appearance.notify();
    EXPECT_TRUE(waitFor([&] { return !turns(); })) << "reduced motion";
}

TEST_F(SidebarTest, ShowsAScanBeforeItStarts)
{
    struct PaintCounter final : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } counter;
    filled();
    auto& label = at(u"scanningLabel"_s);
    label.installEventFilter(&counter);
    EXPECT_FALSE(label.isVisible());
    int before = -1;
    model().isLoading.observe(&counter, [&] { before = *model().isLoading ? counter.paints : before; });
    m_root.addFile(u"/Library/Audio/Plug-Ins/VST3/A.vst3"_s);
    m_system.loginItems.state = platform::LoginItemStatus::enabled; // in the system's own settings
    scan();
    settle();
    EXPECT_TRUE(at<QAbstractButton>(u"launchAtLoginSwitch"_s).isChecked()) << "asked whenever it is drawn";
    EXPECT_GT(before, 0);
    EXPECT_FALSE(label.isVisible());
    EXPECT_EQ(at<SidebarButton>(u"formatRowVST3"_s).count(), u"1"_s);
}

TEST_F(SidebarTest, FitsLargeType)
{
    const FontScale large(2);
    filled(40);
    model().selectedManufacturers = {u"Odd"_s, u"Even"_s};
    model().showAllPlugins = true;
    open({u"actions"_s, u"formats"_s, u"manufacturers"_s, u"recent"_s});
    m_sidebar->resize(250, 420);
    settle();
    EXPECT_EQ(m_sidebar->size(), QSize(250, 420)) << "it fits";
    for (const QWidget* each : m_sidebar->findChildren<QWidget*>()) {
        if (!each->isVisible())
            continue;
        SCOPED_TRACE(qPrintable(each->objectName()));
        EXPECT_LE(each->mapTo(m_sidebar.get(), QPoint(each->width(), 0)).x(), m_sidebar->width());
        const auto* label = qobject_cast<const QLabel*>(each);
        const bool isLine = label ? !label->text().isEmpty() && !label->wordWrap()
                                  : qobject_cast<const SidebarButton*>(each) != nullptr;
        EXPECT_TRUE(!isLine || each->height() >= each->fontMetrics().height());
    }
}

} // namespace orvanlite::test
