#include "ShellFixture.h"

#include "shell/app/DragHandle.h"
#include "shell/app/MainContentView.h"
#include "shell/bulk/BulkConfirmation.h"
#include "shell/toolkit/QuestionBox.h"

#include <QClipboard>
#include <QMenu>
#include <QScrollBar>

namespace orvanlite::test {

class SelectionTest : public ShellTest {
protected:
    void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) { click(table(), row, 1, modifiers); }
    /// The entries of the context menu ("--" is a separator), after triggering one of them.
    QString menuEntries(const QString& triggered = {})
    {
        Q_EMIT table().customContextMenuRequested(table().visualRect(table().model()->index(0, 1)).center());
        auto& menu = named<QMenu>(window(), u"pluginContextMenu"_s);
        QStringList titles;
        for (QAction* entry : menu.actions()) {
            titles.append(entry->isSeparator() ? u"--"_s : entry->text());
            if (entry->objectName() == triggered && !triggered.isEmpty())
                entry->trigger();
        }
        menu.close();
        settle();
        return titles.join(u'|');
    }
};

TEST_F(SelectionTest, GrowsByClicksAcrossSearches)
{
    addPlugins({u"VST3/Alpha.vst3"_s, u"VST3/beta.vst3"_s, u"VST3/Gamma.vst3"_s});
    launch();
    auto& handle = named<DragHandle>(window(), u"bulkPaneHandle"_s);
    EXPECT_FALSE(handle.isVisible());
    clickRow(0);
    EXPECT_TRUE(handle.isVisible());
    const auto role = [](QWidget& each) { return QAccessible::queryAccessibleInterface(&each)->role(); };
    EXPECT_EQ(role(handle), role(named<QWidget>(window(), u"sidebarHandle"_s)));
    clickRow(2);
    EXPECT_EQ(viewModel().selectedPlugins->size(), 1) << "a plain click replaces the selected rows";
    EXPECT_EQ(viewModel().persistedSelections.size(), 2) << "and adds to the pane";
    search(u"beta"_s);
    clickRow(0);
    EXPECT_EQ(viewModel().persistedSelections.size(), 3);
    click(window(), u"clearSearchButton"_s);
    endSearchPause();
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 3) << "a reload marks all that is selected";
    clickRow(1, Qt::ControlModifier);
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 2);
    EXPECT_EQ(viewModel().persistedSelections.size(), 3) << "what is unmarked stays selected";
    viewModel().clearSelection();
    settle();
    EXPECT_TRUE(table().selectionModel()->selectedRows().isEmpty());
    EXPECT_FALSE(handle.isVisible());

    viewModel().selectedPlugins = QSet<QUuid>{viewModel().filteredPlugins()[1].id};
    settle();
    EXPECT_TRUE(table().selectionModel()->isRowSelected(1) && !table().selectionModel()->isRowSelected(0));
}

TEST_F(SelectionTest, RowsSelectedInAPreviewJoinTheNextSelection)
{
    addPlugins(4);
    launch();
    viewModel().activeProfile = PluginProfile{QUuid::createUuid(), u"Mixing"_s, {}, {}};
    viewModel().profileViewFilter = u"all"_s;
    settle();
    clickRow(0);
    EXPECT_EQ(viewModel().selectedPlugins->size(), 1);
    viewModel().activeProfile.mutate([](std::optional<PluginProfile>& profile) { profile.reset(); });
    settle();
    clickRow(2, Qt::ControlModifier);
    EXPECT_EQ(viewModel().selectedPlugins->size(), 2);
    EXPECT_EQ(viewModel().persistedSelections.size(), 2) << "what is marked is what is acted on";
}

TEST_F(SelectionTest, ContextMenuActsOnTheSelection)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Alpha.vst3",
                     infoPlist({{u"CFBundleIdentifier"_s, u"com.r&D.alpha"_s},
                                {u"CFBundleShortVersionString"_s, u"1.2"_s}}));
    addPlugins({u"Disabled/VST3/Beta.vst3"_s});
    launch();
    Q_EMIT table().customContextMenuRequested({10, 10});
    EXPECT_FALSE(window().findChild<QMenu*>(u"pluginContextMenu"_s));
    clickRow(0);
    EXPECT_EQ(menuEntries(u"copyVersionAction"_s),
              u"Visit R&&D Website|Search for Updates|--|Copy Version (1.2)|--|Disable Plugin"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"1.2"_s);
    menuEntries(u"searchUpdatesAction"_s);
    ASSERT_EQ(m_system.workspace.opened.size(), 1U);
    EXPECT_EQ(m_system.workspace.opened.back().query(), u"q=Alpha R&D update latest version"_s);

    viewModel().clearSelection();
    settle();
    clickRow(1);
    EXPECT_EQ(menuEntries(), u"Visit Manufacturer Website|Search for Updates|--|Enable Plugin"_s);
    clickRow(0, Qt::ControlModifier);
    EXPECT_TRUE(menuEntries(u"togglePluginsAction"_s).endsWith(u"|Toggle 2 Plugins"_s));
    ASSERT_TRUE(waitFor([&] { return !*viewModel().isRunningScript && m_log.entries->size() == 2; }));
    EXPECT_TRUE(m_root.exists(u"/Library/Audio/Plug-Ins/Disabled/VST3/Alpha.vst3"));
    EXPECT_TRUE(m_root.exists(u"/Library/Audio/Plug-Ins/VST3/Beta.vst3"));
    EXPECT_EQ(m_system.scripts.sources.size(), 1) << "one password for both";
}

TEST_F(SelectionTest, PaneFollowsItsHandleAndStaysInsideTheWindow)
{
    addPlugins(90);
    launch();
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_A, Qt::ControlModifier);
    settle();
    const auto& pane = named<MainContentView>(window(), u"mainContentView"_s);
    auto& handle = named<DragHandle>(window(), u"bulkPaneHandle"_s);
    EXPECT_EQ(pane.bulkPaneHeight(), 200);
    const QPoint start = handle.mapToGlobal(QPoint(20, 6));
    const auto drag = [&](int by) { QTest::mouseMove(&handle, handle.mapFromGlobal(start + QPoint(0, by))); };
    QTest::mousePress(&handle, Qt::LeftButton, {}, QPoint(20, 6));
    drag(-9);
    EXPECT_EQ(pane.bulkPaneHeight(), 200) << "no drag yet";
    drag(-15);
    EXPECT_EQ(pane.bulkPaneHeight(), 215);
    drag(-20);
    EXPECT_EQ(pane.bulkPaneHeight(), 235) << "the whole way counts again";
    QTest::mouseRelease(&handle, Qt::LeftButton, {}, handle.mapFromGlobal(start));
    for (int i = 0; i < 30; ++i)
        QTest::keyClick(&handle, Qt::Key_Up);
    for (const QSize& size : {QSize(720, 560), QSize(900, 600), QSize(1200, 800)}) {
        window().resize(size);
        settle();
        const auto& list = named<QWidget>(window(), u"bulkPluginList"_s);
        const int lowerEdge = list.mapTo(&window(), QPoint(0, list.height())).y();
        EXPECT_LE(lowerEdge, window().height()) << size.width();
        EXPECT_GE(list.height(), 40) << size.width();
        EXPECT_EQ(window().size(), size);
    }
    EXPECT_EQ(pane.bulkPaneHeight(), 500) << "kept for a larger window";
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(&handle, Qt::Key_Down);
    EXPECT_EQ(pane.bulkPaneHeight(), 80);
    window().activateWindow();
    press(window(), u"clearAllButton"_s);
    EXPECT_TRUE(viewModel().persistedSelections.isEmpty());
    EXPECT_EQ(QApplication::focusWidget(), &table()) << "the pane has gone";
}

TEST_F(SelectionTest, BulkWarningAsksWithTheExactTexts)
{
    addPlugins(12);
    launch();
    BulkConfirmation& request = static_cast<ContentView*>(window().centralWidget())->bulkConfirmation();
    const AudioPlugins twelve = viewModel().filteredPlugins();
    const std::tuple<BulkAction, QString, QString, QString> rows[] = {
        {BulkAction::disable, u"Confirm Bulk Action"_s,
         u"You are about to disable 12 plugins. Are you sure you want to continue?"_s, u"Continue"_s},
        {BulkAction::delete_, u"⚠️ Permanently Delete Plugins"_s,
         u"You are about to permanently delete 12 plugin(s) from your system. This action CANNOT be undone. The "
         "plugin(s) will need to be reinstalled."_s,
         u"Delete Permanently"_s},
    };
    for (const auto& [action, title, message, button] : rows) {
        SCOPED_TRACE(qPrintable(message));
        request.pendingAction = action;
        request.pendingPlugins = twelve;
        request.isShowing = true;
        auto& warning = named<QuestionBox>(window(), u"bulkWarning"_s);
        EXPECT_EQ(warning.windowTitle(), title);
        EXPECT_EQ(warning.heading(), title) << "for systems that hide the title bar's text";
        EXPECT_EQ(warning.message(), message);
        EXPECT_EQ(named(warning, u"confirmButton"_s).text(), button);
        QTest::keyClick(&warning, Qt::Key_Escape);
        settle();
        EXPECT_FALSE(*request.isShowing);
        EXPECT_EQ(request.pendingPlugins, twelve) << "a cancelled request stays until the next one";
        EXPECT_TRUE(m_system.scripts.sources.isEmpty());
    }
    request.isShowing = true;
    click(window(), u"confirmButton"_s);
    EXPECT_TRUE(waitFor([&] { return request.pendingPlugins.empty() && *viewModel().dbTotalCount == 0; }));
    EXPECT_FALSE(request.pendingAction || *request.isShowing);
}

} // namespace orvanlite::test
