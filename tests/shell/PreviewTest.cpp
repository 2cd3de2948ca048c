#include "ShellFixture.h"

#include <QMenu>

namespace orvanlite::test {

/// Four plugins, the first two disabled, and a profile that enables the second and the third.
class PreviewTest : public ShellTest {
protected:
    void launchWithProfile()
    {
        addPlugins(4);
        launch();
        AudioPlugins plugins = *viewModel().plugins;
        for (std::size_t i = 0; i < 2; ++i) {
            plugins[i].isEnabled = false;
            m_database.updatePlugin(plugins[i]);
        }
        viewModel().refreshAllState();
        m_profile.id = QUuid::createUuid();
        m_profile.name = u"A & <b>B</b>"_s;
        m_profile.enabledPlugins = {u"Plugin 0001|VST3"_s, u"Plugin 0002|VST3"_s, u"Gone|VST3"_s};
        viewModel().previewProfile(m_profile);
        settle();
    }
    /// The rows as a screen reader reads them: status, last letter of the name.
    [[nodiscard]] QString rows()
    {
        QStringList lines;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            const auto text = [&](int column) {
                return table().model()->index(row, column).data(Qt::AccessibleTextRole).toString();
            };
            lines.append(text(0) + u' ' + text(1).last(1));
        }
        return lines.join(u',');
    }
    [[nodiscard]] bool isShown(const QString& name) { return named<QWidget>(window(), name).isVisible(); }

    PluginProfile m_profile;
};

TEST_F(PreviewTest, TabsShowTheirRows)
{
    launchWithProfile();
    EXPECT_EQ(named<QLabel>(window(), u"previewTitle"_s).text(), u"Previewing profile: \"A & <b>B</b>\""_s);
    EXPECT_TRUE(named(window(), u"previewTabChanges"_s).isChecked());
    EXPECT_EQ(footer(), u"Showing 2 of 4 plugins"_s);
    const QString changes = u"Will Enable 1,Will Disable 3"_s;
    EXPECT_EQ(rows(), changes);
    for (const auto& [tab, wanted] : {std::pair(u"Enabled"_s, u"Enabled 2"_s),
                                      {u"Disabled"_s, u"Disabled 0"_s},
                                      {u"Changes"_s, changes},
                                      {u"All"_s, u"Disabled 0,Will Enable 1,Enabled 2,Will Disable 3"_s}}) {
        click(window(), u"previewTab"_s + tab);
        EXPECT_EQ(rows(), wanted);
    }
    clickHeader(0);
    EXPECT_EQ(named<PluginTableHeader>(window(), u"pluginTableHeader"_s).sortIndicatorSection(), 0);
    EXPECT_EQ(*viewModel().profileSortMode, 0);
}

TEST_F(PreviewTest, LoadsPagesUntilATabHasRows)
{
    addPlugins(350);
    launch();
    m_profile.name = u"All but the last"_s;
    for (const AudioPlugin& plugin : *viewModel().plugins)
        m_profile.enabledPlugins.insert(pluginKey(plugin));
    m_profile.enabledPlugins.remove(u"Plugin 0349|VST3"_s);
    AudioPlugin last = viewModel().plugins->back();
    last.isEnabled = false;
    m_database.updatePlugin(last);
    viewModel().refreshAllState();
    viewModel().previewProfile(m_profile);
    settle();
    const auto& reason = named<QLabel>(window(), u"noRowsHeading"_s);
    EXPECT_EQ(reason.text(), u"Nothing to change"_s);
    click(window(), u"previewTabDisabled"_s);
    settle();
    EXPECT_EQ(shownNames(), QStringList{u"Plugin 0349"_s});
    EXPECT_FALSE(reason.isVisible());
    search(u"0001"_s);
    EXPECT_EQ(reason.text(), u"No plugins stay disabled that match the search"_s);
}

TEST_F(PreviewTest, IsReadOnlyAndClosesToTheEmptyState)
{
    launchWithProfile();
    EXPECT_TRUE(table().isColumnHidden(4) && table().isColumnHidden(5));
    EXPECT_FALSE(table().isColumnHidden(3));
    table().setFocus();
    table().setCurrentIndex(table().model()->index(0, 2));
    QTest::keyClick(&table(), Qt::Key_Space);
    clickSwitch(0);
    QTest::keyClick(&table(), Qt::Key_Return);
    QTest::keyClick(&table(), Qt::Key_F10, Qt::ShiftModifier);
    settle();
    EXPECT_TRUE(m_system.scripts.sources.isEmpty() && m_system.workspace.opened.empty());
    EXPECT_EQ(window().findChild<QMenu*>(u"pluginContextMenu"_s), nullptr);
    EXPECT_FALSE(viewModel().selectedPlugins->isEmpty());
    EXPECT_TRUE(viewModel().persistedSelections.isEmpty()) << "a preview has its own selection";
    EXPECT_FALSE(isShown(u"bulkActionsView"_s) || isShown(u"emptyState"_s));

    window().activateWindow();
    press(window(), u"closePreviewButton"_s);
    EXPECT_FALSE(isShown(u"previewStrip"_s));
    EXPECT_TRUE(isShown(u"emptyState"_s));
    EXPECT_FALSE(table().isColumnHidden(4)) << "the plain table is back behind it";
    EXPECT_TRUE(QApplication::focusWidget() && QApplication::focusWidget()->isVisible());
}

} // namespace orvanlite::test
