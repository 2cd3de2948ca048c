#include "ShellFixture.h"

#include <QMenu>

namespace orvanlite::test {

/// Four plugins of which the first two are off, and a profile in which the second and the third are on.
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
        m_profile.name = u"Mix & <b>Master</b>"_s;
        m_profile.enabledPlugins = {u"Plugin 0001|VST3"_s, u"Plugin 0002|VST3"_s, u"Gone|VST3"_s};
        viewModel().previewProfile(m_profile);
        settle();
    }
    void choose(const QString& tab) { click(window(), u"previewTab"_s + tab); }
    /// The rows as a screen reader hears them: status, name.
    [[nodiscard]] QStringList rows()
    {
        QStringList lines;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            const auto text = [&](int column) {
                return table().model()->index(row, column).data(Qt::AccessibleTextRole).toString();
            };
            lines.append(text(0) + u' ' + text(1).last(1));
        }
        return lines;
    }
    [[nodiscard]] bool isShown(const QString& name) { return named<QWidget>(window(), name).isVisible(); }

    PluginProfile m_profile;
};

TEST_F(PreviewTest, TabsShowTheirRows)
{
    launchWithProfile();
    EXPECT_EQ(named<QLabel>(window(), u"previewTitle"_s).text(),
              u"Previewing profile: \"Mix & <b>Master</b>\""_s);
    EXPECT_TRUE(named(window(), u"previewTabChanges"_s).isChecked());
    EXPECT_EQ(rows(), QStringList({u"Will Enable 1"_s, u"Will Disable 3"_s}));
    EXPECT_EQ(footer(), u"Showing 2 of 4 plugins"_s);
    choose(u"Enabled"_s);
    EXPECT_EQ(rows(), QStringList({u"Enabled 2"_s}));
    choose(u"Disabled"_s);
    EXPECT_EQ(rows(), QStringList({u"Disabled 0"_s}));
    choose(u"All"_s);
    EXPECT_EQ(rows(),
              QStringList({u"Disabled 0"_s, u"Will Enable 1"_s, u"Enabled 2"_s, u"Will Disable 3"_s}));
    clickHeader(0);
    EXPECT_EQ(named<PluginTableHeader>(window(), u"pluginTableHeader"_s).sortIndicatorSection(), 0);
    EXPECT_EQ(*viewModel().profileSortMode, 0);
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
