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
#include "shell/toolkit/ThemeController.h"

#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace orvanlite::test {

/// The sidebar in a window of its own, on a real catalogue and a real shell.
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
    static void settle()
    {
        for (int turn = 0; turn < 4; ++turn)
            turnEventLoop();
    }
    template <typename Widget = QWidget>
    Widget& at(const QString& name)
    {
        return named<Widget>(*m_sidebar, name);
    }
    void click(const QString& name)
    {
        if (name.startsWith(u"maker "_s)) {
            auto& table = at<ManufacturerTable>(m_sidebar->findChild<ManufacturerTable*>()->objectName());
            const auto found = table.model()->match(table.model()->index(0, 0), Qt::DisplayRole, name.mid(6));
            QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(found.at(0)).center());
        } else {
            QTest::mouseClick(&at(name), Qt::LeftButton);
        }
        settle();
    }
    void press(Qt::Key key)
    {
        QTest::keyClick(QApplication::focusWidget(), key);
        settle();
    }
    [[nodiscard]] QString focused() const { return QApplication::focusWidget()->objectName(); }
    [[nodiscard]] QString openSections()
    {
        QStringList open;
        for (const auto* each : m_sidebar->findChildren<SidebarButton*>()) {
            if (each->objectName().endsWith(u"Header"_s) && each->isChecked() && each->isVisible())
                open.append(each->objectName().chopped(6));
        }
        return open.join(u' ');
    }
    /// "formats / manufacturers / whether the table shows / open sections / chosen rows"
    [[nodiscard]] QString state()
    {
        QStringList formats;
        for (const PluginFormat format : *model().selectedFormats)
            formats.append(rawValue(format));
        formats.sort();
        QStringList makers = model().selectedManufacturers->values();
        makers.sort();
        QStringList chosen;
        for (const auto* each : m_sidebar->findChildren<SidebarButton*>()) {
            if (!each->objectName().endsWith(u"Header"_s) && each->isChecked())
                chosen.append(each->label());
        }
        return QStringList{formats.join(u','), makers.join(u','),
                           *model().showAllPlugins ? u"table"_s : u"-"_s, openSections(), chosen.join(u',')}
            .join(u" / "_s);
    }
    [[nodiscard]] QMessageBox* question() const { return m_sidebar->findChild<QMessageBox*>(); }
    void answer(const QString& button)
    {
        QTest::mouseClick(&named<QAbstractButton>(*question(), button), Qt::LeftButton);
        settle();
    }
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 20'000); }

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
    AudioPlugins all(3);
    all[0].isEnabled = true;
    all[1].isEnabled = all[2].isEnabled = false;
    struct Row {
        SidebarFilter filter;
        QString enable, summary, enabling, deleting;
    };
    const QString everywhere =
        u"This will enable ALL 2 disabled plugins across every format and manufacturer, regardless of any "
        "active filters."_s;
    const QString forGood = u"⚠️ This will PERMANENTLY DELETE 3 plugins "_s;
    const QString noWayBack = u". This cannot be undone!"_s;
    for (const Row& row : {
             Row{{}, u"Enable All"_s, {}, everywhere, u"from your system"_s},
             Row{{{vst3}, {}}, u"Enable All VST3"_s, u"VST3"_s, u"VST3"_s, {}},
             Row{{{au}, {}}, u"Enable All Audio Units"_s, u"Audio Units"_s, u"Audio Units"_s, {}},
             Row{{{vst3, aax, au}, {}},
                 u"Enable Filtered"_s,
                 u"AAX, Audio Units, VST3"_s,
                 u"AAX, Audio Units, VST3"_s,
                 {}},
             Row{{{}, {u"b"_s, u"A"_s}}, u"Enable Filtered"_s, u"A, b"_s, u"A, b"_s, {}},
             Row{{{clap}, {u"50%1"_s}}, u"Enable Filtered"_s, u"CLAP · 50%1"_s, u"CLAP + 50%1"_s, {}},
             Row{{{vst2}, {u"C"_s, u"a"_s, u"B"_s}},
                 u"Enable Filtered"_s,
                 u"VST · B +2 more"_s,
                 u"VST + B, C, a"_s,
                 {}},
         }) {
        SCOPED_TRACE(qPrintable(row.summary));
        EXPECT_EQ(enableDisableButtonLabel(BulkAction::enable, row.filter), row.enable);
        EXPECT_EQ(enableDisableButtonLabel(BulkAction::delete_, row.filter),
                  QString(row.enable).replace(u"Enable"_s, u"Delete"_s));
        EXPECT_EQ(filterSummary(row.filter), row.summary);
        const bool isFiltered = row.deleting.isEmpty();
        EXPECT_EQ(sidebarWarningMessage(BulkAction::enable, all, row.filter),
                  isFiltered ? u"This will enable 2 plugins filtered by: "_s + row.enabling + u'.'
                             : row.enabling);
        EXPECT_EQ(sidebarWarningMessage(BulkAction::disable, all, row.filter),
                  isFiltered ? u"This will disable 1 plugins filtered by: "_s + row.enabling + u'.'
                             : QString(everywhere)
                                   .replace(u"enable"_s, u"disable"_s)
                                   .replace(u"2 disabled"_s, u"1 enabled"_s));
        EXPECT_EQ(sidebarWarningMessage(BulkAction::delete_, all, row.filter),
                  forGood + (isFiltered ? u"filtered by: "_s + row.enabling : row.deleting) + noWayBack);
    }
}

TEST_F(SidebarTest, EveryClickDoesItsSteps)
{
    filled();
    click(u"formatsHeader"_s);
    click(u"manufacturersHeader"_s);
    const QString open = u"formats manufacturers"_s;
    const QString acting = u"actions "_s + open;
    struct Step {
        QString click, wanted;
        int reloads;
    };
    for (const Step& step : {
             Step{u"allPluginsButton"_s, u" /  / table / "_s + acting + u" / All Plugins"_s, 2},
             Step{u"allPluginsButton"_s, u" /  / - / "_s + open + u" / "_s, 0},
             Step{u"formatRowVST3"_s, u"VST3 /  / table / "_s + acting + u" / VST3"_s, 2},
             Step{u"formatRowCLAP"_s, u"CLAP,VST3 /  / table / "_s + acting + u" / VST3,CLAP"_s, 2},
             Step{u"allPluginsButton"_s, u" /  / table / "_s + acting + u" / All Plugins"_s, 2},
             Step{u"formatRowVST3"_s, u"VST3 /  / table / "_s + acting + u" / VST3"_s, 2},
             Step{u"formatRowVST3"_s, u" /  / - / "_s + open + u" / "_s, 2},
             Step{u"maker Odd"_s, u" / Odd / table / "_s + acting + u" / All Plugins"_s, 2},
             Step{u"formatRowVST3"_s, u"VST3 / Odd / table / "_s + acting + u" / VST3"_s, 2},
             Step{u"formatRowVST3"_s, u" / Odd / table / "_s + acting + u" / All Plugins"_s, 2},
             Step{u"formatRowCLAP"_s, u"CLAP / Odd / table / "_s + acting + u" / CLAP"_s, 2},
             Step{u"maker Odd"_s, u"CLAP /  / table / "_s + acting + u" / CLAP"_s, 2},
             Step{u"maker Even"_s, u"CLAP / Even / table / "_s + acting + u" / CLAP"_s, 2},
             Step{u"clearManufacturersButton"_s, u"CLAP /  / - / "_s + open + u" / CLAP"_s, 2},
             Step{u"maker Even"_s, u"CLAP / Even / table / "_s + acting + u" / CLAP"_s, 2},
             Step{u"clearFiltersButton"_s, u" /  / table / "_s + acting + u" / All Plugins"_s, 4},
         }) {
        SCOPED_TRACE(qPrintable(step.click + u" -> "_s + step.wanted));
        model().activeProfile = PluginProfile{};
        settle();
        EXPECT_FALSE(at(u"actionsSection"_s).isVisible() || at(u"sidebarDivider"_s).isVisible())
            << "under a preview";
        const int before = countPosts();
        click(step.click);
        EXPECT_EQ(state(), step.wanted);
        EXPECT_EQ(countPosts() - before, step.reloads);
        EXPECT_FALSE(model().activeProfile->has_value());
        EXPECT_TRUE(at(u"sidebarDivider"_s).isVisible());
        EXPECT_EQ(at(u"filterBar"_s).isVisible(), at<QLabel>(u"filterSummary"_s).text() != QString());
    }
}

TEST_F(SidebarTest, ShowsItsRowsFromTopToBottom)
{
    m_log.log(u"A"_s, u"VST3"_s, ActivityAction::enabled);
    filled();
    model().selectedManufacturers = {u"Odd"_s};
    model().showAllPlugins = true;
    for (const char16_t* each :
         {u"actionsHeader", u"formatsHeader", u"manufacturersHeader", u"recentHeader"}) {
        settle();
        click(QString::fromUtf16(each));
    }
    at(u"allPluginsButton"_s).setFocus();
    QStringList stops;
    do {
        const auto* button = qobject_cast<SidebarButton*>(QApplication::focusWidget());
        stops.append(button ? QStringList{button->label(), button->accessibleDescription()}.join(u'|')
                            : focused());
        const QWidget* stop = QApplication::focusWidget();
        const QPoint place = stop->mapTo(m_sidebar.get(), QPoint(1, 1));
        EXPECT_TRUE(m_sidebar->childAt(place)) << qPrintable(focused()) << " is in view";
        press(Qt::Key_Tab);
    } while (focused() != u"allPluginsButton"_s && stops.size() < 40);
    EXPECT_EQ(
        stops.join(u'\n'),
        u"All Plugins|20\nclearFiltersButton\nProfiles|0\nActions|\nEnable Filtered|\nDisable Filtered|\n"
        "Delete Filtered|\nPlugin Formats|\nAudio Units|0\nVST3|10\nVST|0\nAAX|0\nCLAP|10\nWaves|0\n"
        "Manufacturers|\nclearManufacturersButton\nmanufacturerSearchField\nmanufacturerTable\n"
        "Statistics|\nlaunchAtLoginSwitch\nRecent Activity|1\nclearActivityButton\nactivityLogList"_s);
    EXPECT_EQ(at<QLabel>(u"sidebarTitle"_s).text(), u"Orvanlite"_s);
    EXPECT_EQ(at<QLabel>(u"sidebarCaption"_s).text(), u"Audio Plugin Management"_s);
    EXPECT_EQ(at(u"clearFiltersButton"_s).toolTip(), u"Clear all filters"_s);
    EXPECT_EQ(at<QLabel>(u"statisticsTotal"_s).text() + at<QLabel>(u"statisticsEnabled"_s).text() +
                  at<QLabel>(u"statisticsDisabled"_s).text(),
              u"20182"_s);
}

TEST_F(SidebarTest, KeepsTheFocusWhenAPartGoes)
{
    filled();
    model().selectedManufacturers = {u"Odd"_s};
    model().showAllPlugins = true;
    settle();
    click(u"actionsHeader"_s);
    click(u"formatsHeader"_s);
    const auto loses = [this](const QString& name, const std::function<void()>& change) {
        at(name).setFocus();
        EXPECT_EQ(focused(), name);
        change();
        settle();
        EXPECT_FALSE(at(name).isVisible());
        return focused();
    };
    EXPECT_EQ(loses(u"enableFilteredButton"_s,
                    [this] {
                        model().persistedSelections.insert(model().displayedPlugins->front().id);
                        model().refreshBulkPane();
                    }),
              u"formatsHeader"_s);
    EXPECT_TRUE(at(u"invertSelectionButton"_s).isVisible());
    EXPECT_EQ(loses(u"clearManufacturersButton"_s, [this] { press(Qt::Key_Space); }),
              u"manufacturersHeader"_s);
    EXPECT_FALSE(at(u"invertSelectionButton"_s).isVisible());
    model().selectedManufacturers = {u"Odd"_s};
    EXPECT_EQ(sidebar().objectName(), u"sidebarView"_s);
    at(u"invertSelectionButton"_s).setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(model().persistedSelections.size(), 10) << "all that is not filtered";
    EXPECT_EQ(loses(u"invertSelectionButton"_s, [this] { model().clearSelection(); }),
              u"manufacturersHeader"_s);
    EXPECT_EQ(loses(u"clearFiltersButton"_s, [this] { press(Qt::Key_Space); }), u"allPluginsButton"_s);
    EXPECT_EQ(loses(u"formatRowVST3"_s, [this] { model().resetView(); }), u"formatsHeader"_s);
    EXPECT_EQ(openSections(), QString()) << "the statistics are closed too";
    m_database.replaceAllPlugins({});
    EXPECT_EQ(loses(u"manufacturersHeader"_s, [this] { model().refreshAllState(); }), u"formatsHeader"_s);
    EXPECT_EQ(at<SidebarButton>(u"formatRowVST3"_s).count(), u"0"_s);
}

TEST_F(SidebarTest, ActsOnTheFilteredOnesAfterAQuestion)
{
    for (const char16_t* each : {u"VST3/A.vst3", u"VST3/B.vst3", u"CLAP/C.clap"})
        m_root.addFile(u"/Library/Audio/Plug-Ins/"_s + QString::fromUtf16(each));
    scan();
    sidebar();
    click(u"formatsHeader"_s);
    click(u"formatRowVST3"_s);
    click(u"disableFilteredButton"_s);
    ASSERT_TRUE(question());
    EXPECT_EQ(question()->windowTitle(), u"Disable All VST3 Plugins?"_s);
    EXPECT_EQ(question()->informativeText(), u"This will disable 2 plugins filtered by: VST3."_s);
    EXPECT_EQ(question()->defaultButton()->objectName(), u"cancelButton"_s);
    answer(u"cancelButton"_s);
    EXPECT_TRUE(m_system.scripts.sources.isEmpty());

    m_system.scripts.whileRunning = [this] { // a reader's action is no input
        at<QAbstractButton>(u"deleteFilteredButton"_s).click();
        EXPECT_FALSE(question() && question()->isVisible());
    };
    click(u"disableFilteredButton"_s);
    EXPECT_EQ(named<QAbstractButton>(*question(), u"confirmButton"_s).text(), u"Disable All VST3"_s);
    answer(u"confirmButton"_s);
    const QStringList disabled{u"A Disabled"_s, u"B Disabled"_s, u"C Enabled"_s};
    EXPECT_TRUE(waitFor([&] { return states() == disabled && !*model().isRunningScript; }));
    scan();
    settle();
    EXPECT_EQ(states(), disabled) << "on the disk too";
    EXPECT_EQ(at<QLabel>(u"statisticsDisabled"_s).text(), u"2"_s);

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
    EXPECT_EQ(at<SidebarButton>(u"allPluginsButton"_s).count(), u"2"_s);
    EXPECT_EQ(at<SidebarButton>(u"recentHeader"_s).count(), u"5"_s);
    const auto scripts = m_system.scripts.sources.size();
    click(u"deleteFilteredButton"_s);
    answer(u"confirmButton"_s);
    EXPECT_EQ(m_system.scripts.sources.size(), scripts) << "there is nothing left to delete";
    EXPECT_EQ(m_passed, (QStringList{u"VST3"_s, u"all"_s}));
}

TEST_F(SidebarTest, BringsTheActionsToTheTop)
{
    for (const bool isReduced : {true, false}) {
        SCOPED_TRACE(isReduced);
        m_system.appearance.reduced = isReduced;
        m_sidebar.reset();
        model().resetView();
        filled(40);
        m_sidebar->resize(250, 420);
        for (const char16_t* each : {u"formatsHeader", u"manufacturersHeader", u"recentHeader"})
            click(QString::fromUtf16(each));
        auto& column = at<QScrollArea>(u"sidebarColumn"_s);
        EXPECT_TRUE(waitFor([&] { return column.verticalScrollBar()->maximum() > 0; }));
        EXPECT_GE(column.height(), 100) << "there is room to use it, whatever is open";
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
        EXPECT_TRUE(waitFor([&] { return at(u"statisticsTotal"_s).visibleRegion().isEmpty() == false; }));
    }
}

TEST_F(SidebarTest, TellsOfAScanBeforeItStarts)
{
    class PaintCounter final : public QObject {
    public:
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } counter;
    filled();
    const int statistics = at(u"statisticsSection"_s).mapTo(m_sidebar.get(), QPoint()).y();
    auto& label = at(u"scanningLabel"_s);
    label.installEventFilter(&counter);
    EXPECT_FALSE(label.isVisible());
    int before = -1;
    int place = -1;
    model().isLoading.observe(m_sidebar.get(), [&] {
        if (!*model().isLoading)
            return;
        before = counter.paints;
        place = at(u"statisticsSection"_s).mapTo(m_sidebar.get(), QPoint()).y();
    });
    m_root.addFile(u"/Library/Audio/Plug-Ins/VST3/A.vst3"_s);
    m_system.loginItems.state = platform::LoginItemStatus::enabled; // in the system's own settings
    scan();
    settle();
    EXPECT_TRUE(at<QAbstractButton>(u"launchAtLoginSwitch"_s).isChecked()) << "asked whenever it is drawn";
    EXPECT_GT(before, 0);
    EXPECT_EQ(place, statistics) << "nothing moves aside";
    EXPECT_FALSE(label.isVisible());
    EXPECT_EQ(at<SidebarButton>(u"formatRowVST3"_s).count(), u"1"_s);
}

TEST_F(SidebarTest, TitleTurnsOnlyWhileItIsSeen)
{
    m_system.appearance.reduced = false;
    filled();
    auto& title = at<SidebarTitle>(u"sidebarTitle"_s);
    EXPECT_TRUE(waitFor([&] { return title.isTurning(); }));
    const auto picture = [&](double seconds) {
        m_system.clock.setNow(1'700'000'000 + seconds);
        return title.grab().toImage();
    };
    const QImage start = picture(0);
    EXPECT_NE(picture(2), start);
    EXPECT_EQ(picture(6), start) << "once every 6 seconds";
    m_sidebar->showMinimized();
    EXPECT_TRUE(waitFor([&] { return !title.isTurning(); }));
    m_sidebar->showNormal();
    EXPECT_TRUE(waitFor([&] { return title.isTurning(); }));
    m_sidebar->hide();
    EXPECT_FALSE(title.isTurning());
    m_sidebar->show();
    m_system.appearance.reduced = true;
    m_system.appearance.notify();
    EXPECT_TRUE(waitFor([&] { return !title.isTurning(); }));
    EXPECT_EQ(picture(2), picture(4));
}

TEST_F(SidebarTest, CutsNoTextInLargeType)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    QApplication::setFont(large);
    filled(40);
    model().selectedManufacturers = {u"Odd"_s, u"Even"_s};
    model().showAllPlugins = true;
    for (const char16_t* each :
         {u"actionsHeader", u"formatsHeader", u"manufacturersHeader", u"recentHeader"}) {
        settle();
        click(QString::fromUtf16(each));
    }
    m_sidebar->resize(250, 420);
    settle();
    EXPECT_EQ(m_sidebar->size(), QSize(250, 420)) << "it fits";
    for (const QWidget* each : m_sidebar->findChildren<QWidget*>()) {
        if (!each->isVisible())
            continue;
        SCOPED_TRACE(
            qPrintable(each->objectName() + u' ' + QLatin1StringView(each->metaObject()->className())));
        const int right = each->mapTo(m_sidebar.get(), QPoint(each->width(), 0)).x();
        EXPECT_LE(right, m_sidebar->width());
        const auto* label = qobject_cast<const QLabel*>(each);
        if ((label && !label->text().isEmpty() && !label->wordWrap()) ||
            qobject_cast<const SidebarButton*>(each)) {
            EXPECT_GE(each->height(), each->fontMetrics().height());
        }
    }
    QApplication::setFont(usual);
}

} // namespace orvanlite::test
