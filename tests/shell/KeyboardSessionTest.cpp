#include "ShellFixture.h"

#include <QGuiApplication>
#include <QWindow>

namespace orvanlite::test {

/// The whole window by keyboard alone; keys go to the active window.
class KeyboardSession : public ShellTest {
protected:
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QWindow* focus = QGuiApplication::focusWindow();
        ASSERT_TRUE(focus);
        QTest::keyClick(focus, key, modifiers);
        settle();
    }
    static void goTo(const QString& objectName)
    {
        for (int stops = 0; stops < 60 && focused() != objectName; ++stops)
            press(Qt::Key_Tab);
        EXPECT_EQ(focused().toStdString(), objectName.toStdString());
    }
    void type(const QString& text)
    {
        for (const QChar letter : text)
            QTest::keyClick(QGuiApplication::focusWindow(), letter.toLatin1());
        endSearchPause();
    }
    [[nodiscard]] QStringList selected()
    {
        QStringList names;
        for (const AudioPlugin& plugin : viewModel().filteredPlugins()) {
            if (viewModel().persistedSelections.contains(plugin.id))
                names.append(plugin.name);
        }
        return names;
    }
    [[nodiscard]] auto onDisk() const { return m_root.names(u"/Library/Audio/Plug-Ins/VST3").size(); }
    /// Activates the window, as a window manager does when a dialog closes.
    [[nodiscard]] bool comesBackTo(const QString& objectName = {})
    {
        const bool isGone = waitFor([] { return !QApplication::activeModalWidget(); });
        window().activateWindow();
        return isGone && waitFor([&] {
                   return !focused().isEmpty() && (objectName.isEmpty() || focused() == objectName);
               });
    }
    [[nodiscard]] bool isAsked()
    {
        return waitFor([] { return QApplication::activeModalWidget() && !focused().isEmpty(); });
    }
};

TEST_F(KeyboardSession, SearchesSortsFiltersSelectsAndDeletes)
{
    addPlugins(12);
    addPlugins({u"CLAP/Other.clap"_s});
    launch();
    window().activateWindow();
    ASSERT_TRUE(waitFor([] { return QGuiApplication::focusWindow() != nullptr; }));
    EXPECT_EQ(focused(), u"allPluginsButton"_s) << "the sidebar comes first";

    goTo(u"searchField"_s);
    type(u"0011"_s);
    EXPECT_EQ(footer(), u"Showing 1 of 1 plugins"_s);
    goTo(u"clearSearchButton"_s);
    press(Qt::Key_Space);
    endSearchPause();
    EXPECT_EQ(footer(), u"Showing 13 of 13 plugins"_s);

    goTo(u"pluginTableHeader"_s); // its current section is the one sorted by
    press(Qt::Key_Space);
    EXPECT_EQ(shownNames().first(), u"Plugin 0011"_s);
    press(Qt::Key_Space);
    EXPECT_EQ(shownNames().first(), u"Other"_s);

    goTo(u"formatsHeader"_s);
    press(Qt::Key_Space);
    goTo(u"formatRowVST3"_s);
    press(Qt::Key_Space);
    EXPECT_EQ(footer(), u"Showing 12 of 12 plugins"_s);

    goTo(u"pluginTable"_s);
    EXPECT_EQ(selected(), QStringList()) << "focus alone selects nothing";
    press(Qt::Key_Down);
    EXPECT_EQ(selected(), QStringList{u"Plugin 0000"_s}) << "the row with the focus ring comes first";
    press(Qt::Key_Down, Qt::AltModifier);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(selected().size(), 1) << "moving over a row does not select it";
    press(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (QStringList{u"Plugin 0000"_s, u"Plugin 0002"_s}));
    EXPECT_TRUE(viewModel().filteredPlugins()[2].isEnabled) << "selecting switches nothing";

    goTo(u"deleteSelectedButton"_s);
    press(Qt::Key_Space);
    ASSERT_TRUE(isAsked());
    press(Qt::Key_Escape);
    ASSERT_TRUE(comesBackTo(u"deleteSelectedButton"_s));
    EXPECT_EQ(onDisk(), 12);
    press(Qt::Key_Space);
    ASSERT_TRUE(isAsked());
    goTo(u"confirmButton"_s);
    press(Qt::Key_Space);
    EXPECT_TRUE(waitFor([this] { return *viewModel().dbTotalCount == 11; }));
    EXPECT_EQ(onDisk(), 10);
    EXPECT_TRUE(m_root.exists(u"/Library/Audio/Plug-Ins/VST3/Plugin 0001.vst3"));
}

TEST_F(KeyboardSession, ReturnPressesWhatHasTheFocus)
{
    addPlugins(2);
    launch();
    window().activateWindow();
    goTo(u"profilesHeader"_s);
    press(Qt::Key_Return);
    for (const QString& button : {u"cancelButton"_s, u"textField"_s}) {
        goTo(u"saveProfileButton"_s);
        press(Qt::Key_Return);
        ASSERT_TRUE(isAsked());
        type(u"Mix"_s);
        goTo(button);
        press(Qt::Key_Return);
        ASSERT_TRUE(comesBackTo());
        EXPECT_EQ(window().findChild<QWidget*>(u"profileRow0"_s) != nullptr, button == u"textField"_s);
    }
    goTo(u"profileRow0Delete"_s);
    press(Qt::Key_Return);
    ASSERT_TRUE(isAsked()) << "and no preview";
    press(Qt::Key_Escape);
    ASSERT_TRUE(comesBackTo());
    EXPECT_FALSE(viewModel().activeProfile->has_value());
    goTo(u"exportButton"_s);
    press(Qt::Key_Return);
    ASSERT_TRUE(isAsked());
    goTo(u"exportCancelButton"_s);
    press(Qt::Key_Return);
    ASSERT_TRUE(comesBackTo()) << "no panel asks where to save";
    goTo(u"profileRow0"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(viewModel().activeProfile->has_value());
    goTo(u"exportButton"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"closePreviewButton"_s) << "before the table, as on the screen";
}

} // namespace orvanlite::test
