#include "ShellFixture.h"

#include "profiles/ProfileManager.h"
#include "shell/sidebar/ProfileRow.h"
#include "shell/toolkit/FileSavePanel.h"

#include <QFileDialog>

namespace orvanlite::test {

class ProfilesSectionTest : public ShellTest {
protected:
    void launchWith(int count)
    {
        addPlugins(count);
        launch();
        named(window(), u"profilesHeader"_s).click();
        waitFor([this] { return named<QWidget>(window(), u"saveProfileButton"_s).isVisible(); });
    }
    [[nodiscard]] const auto& profiles()
    {
        return *static_cast<ContentView*>(window().centralWidget())->profileManager().profiles;
    }
    void press(const QString& name) { test::press(window(), name); }
    void answer(const QString& dialog, const QString& title, const QString& message, const QString& action,
                const QString& name = {})
    {
        auto& box = named<QDialog>(window(), dialog);
        EXPECT_EQ(box.windowTitle(), title);
        QStringList texts;
        for (const QLabel* label : box.findChildren<QLabel*>())
            texts.append(label->text());
        EXPECT_TRUE(texts.contains(message)) << qPrintable(texts.join(u'|'));
        auto& confirm = named(box, u"confirmButton"_s);
        EXPECT_EQ(confirm.text().remove(u'&'), action);
        if (auto* field = box.findChild<QLineEdit*>(u"textField"_s)) {
            EXPECT_FALSE(confirm.isEnabled()) << "without a name";
            for (const QString& typed : {u"  "_s, name}) {
                EXPECT_TRUE(box.isVisible()) << "spaces are not a name";
                QTest::keyClicks(field, typed);
                QTest::keyClick(field, Qt::Key_Return);
            }
        } else {
            click(confirm);
        }
        waitFor([this] { return !*viewModel().isRunningScript; });
        settle();
    }
    void save(const QString& name)
    {
        press(u"saveProfileButton"_s);
        answer(u"saveProfileDialog"_s, u"Save Profile"_s,
               u"Save the current enabled/disabled state of all plugins as a profile."_s, u"Save"_s, name);
    }
    /// The rows as a screen reader reads them; ">" precedes the previewed one.
    [[nodiscard]] std::string rows()
    {
        QStringList lines;
        for (ProfileRow* row : window().findChildren<ProfileRow*>()) {
            if (!row->isVisible())
                continue;
            const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(row);
            EXPECT_EQ(spoken->role(), QAccessible::ListItem);
            lines.append((spoken->state().selected ? u"> "_s : QString()) + spoken->text(QAccessible::Name) +
                         u": "_s + spoken->text(QAccessible::Description));
        }
        return lines.join(u'|').toStdString();
    }
    void toggle(int row)
    {
        clickSwitch(row);
        waitFor([this] { return !*viewModel().isRunningScript; });
        settle();
    }
};

TEST_F(ProfilesSectionTest, SavesPreviewsAndApplies)
{
    launchWith(4);
    EXPECT_TRUE(named<QLabel>(window(), u"noProfilesLabel"_s).isVisible());
    save(u"Mixing"_s);
    save(u"<b>&Mastering"_s);
    EXPECT_EQ(rows(), "Mixing: Up to date|<b>&Mastering: Up to date");
    EXPECT_FALSE(named<QLabel>(window(), u"noProfilesLabel"_s).isVisible());
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    named<QWidget>(window(), u"profilesHeader"_s).setFocus();
    for (const char* next : {"", "Apply", "Update", "Export", "Delete"}) {
        test::press(Qt::Key_Tab);
        EXPECT_EQ(focused(), u"profileRow0"_s + QLatin1StringView(next));
    }
    named<QWidget>(window(), u"profileRow1Delete"_s).setFocus();
    test::press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"saveProfileButton"_s);
    toggle(0);
    EXPECT_EQ(rows(), "Mixing: 1 change to apply|<b>&Mastering: 1 change to apply");
    toggle(1);
    press(u"profileRow1"_s);
    EXPECT_EQ(rows(), "Mixing: 2 changes to apply|> <b>&Mastering: 2 changes to apply");
    EXPECT_EQ(shownNames(), QStringList({u"Plugin 0000"_s, u"Plugin 0001"_s}));
    press(u"profileRow0"_s);
    EXPECT_EQ(rows(), "> Mixing: 2 changes to apply|<b>&Mastering: 2 changes to apply");
    press(u"profileRow0"_s);
    EXPECT_FALSE(viewModel().activeProfile->has_value() || *viewModel().showAllPlugins);

    press(u"profileRow0Apply"_s);
    answer(u"applyProfileDialog"_s, u"Apply Profile?"_s,
           u"Applying \"Mixing\" will enable 2 and disable 0 plugins."_s, u"Apply"_s);
    EXPECT_EQ(rows(), "Mixing: Up to date|<b>&Mastering: Up to date");
    EXPECT_EQ(m_root.names(u"/Library/Audio/Plug-Ins/VST3").size(), 4);
}

TEST_F(ProfilesSectionTest, UpdatesDeletesAndCreatesFromTheSelection)
{
    launchWith(3);
    save(u"One"_s);
    save(u"Two"_s);
    save(u"Three"_s);
    toggle(0);
    press(u"profileRow1"_s);
    press(u"profileRow1Update"_s);
    answer(u"updateProfileDialog"_s, u"Update Profile?"_s,
           u"Overwrite \"Two\" with the current plugin state?"_s, u"Update"_s);
    EXPECT_EQ(rows(), "One: 1 change to apply|> Two: Up to date|Three: 1 change to apply");
    EXPECT_TRUE(shownNames().isEmpty()) << "the preview compares with the new sets";
    press(u"profileRow1Delete"_s);
    auto& box = named<QDialog>(window(), u"deleteProfileDialog"_s);
    QTest::keyClick(&box, Qt::Key_Escape);
    settle();
    EXPECT_EQ(profiles().size(), 3U);
    window().activateWindow();
    press(u"profileRow1Delete"_s);
    answer(u"deleteProfileDialog"_s, u"Delete Profile?"_s, u"Are you sure you want to delete \"Two\"?"_s,
           u"Delete"_s);
    EXPECT_EQ(rows(), "One: 1 change to apply|Three: 1 change to apply");
    EXPECT_FALSE(viewModel().activeProfile->has_value() || *viewModel().showAllPlugins);
    EXPECT_EQ(window().focusWidget()->objectName(), u"profileRow2"_s) << "the neighbour has the focus";

    auto& button = named(window(), u"profileFromSelectionButton"_s);
    EXPECT_FALSE(button.isVisible());
    viewModel().showAllPlugins = true;
    settle();
    table().selectRow(1);
    settle();
    ASSERT_TRUE(button.isVisible());
    press(u"profileFromSelectionButton"_s);
    answer(
        u"profileFromSelectionDialog"_s, u"Create Profile from Selection"_s,
        u"The 1 selected plugins will be marked as enabled. All other plugins will be disabled in this profile."_s,
        u"Create"_s, u"Solo"_s);
    EXPECT_EQ(profiles().back().enabledPlugins, QSet<QString>{u"Plugin 0001|VST3"_s});
}

TEST_F(ProfilesSectionTest, ExportsAndImportsDocuments)
{
    launchWith(2);
    save(u"AC/DC 1.2"_s);
    const QString path = m_root.at(u"/Users/tester/Mixing.json");
    press(u"profileRow0Export"_s);
    auto& savePanel = named<QFileDialog>(window(), u"savePanel"_s);
    EXPECT_EQ(QFileInfo(savePanel.selectedFiles().value(0)).fileName(), u"AC-DC 1.2.json"_s);
    Q_EMIT savePanel.fileSelected(m_root.at(u"/Users/tester/Mixing"));
    delete &savePanel;
    FileSavePanel panel(window(), {});
    for (const auto& [name, proposed] : {std::pair(u" "_s, u"profile.json"_s),
                                         {u".JSON"_s, u"profile.json"_s},
                                         {QString(300, u'x'), QString(250, u'x') + u".json"_s},
                                         {QString(200, u'ü'), QString(125, u'ü') + u".json"_s}}) {
        panel.ask({u"Export"_s, name, u"Profile"_s, u"json"_s}, {});
        auto& asked = named<QFileDialog>(window(), u"savePanel"_s);
        EXPECT_EQ(QFileInfo(asked.selectedFiles().value(0)).fileName(), proposed);
        delete &asked;
    }
    ASSERT_TRUE(m_root.exists(u"/Users/tester/Mixing.json"));
    const auto import = [this](const QString& file) {
        press(u"importProfileButton"_s);
        auto& openPanel = named<QFileDialog>(window(), u"openPanel"_s);
        const QString printed = quietly([&] { Q_EMIT openPanel.fileSelected(file); });
        delete &openPanel;
        settle();
        return printed;
    };
    EXPECT_EQ(import(path), QString());
    EXPECT_EQ(rows(), "AC/DC 1.2: Up to date|AC/DC 1.2: Up to date");
    m_root.addFile(u"/Users/tester/Mixing.json", "[]");
    EXPECT_TRUE(import(path).startsWith(u"Failed to import profile: "_s));
    EXPECT_EQ(profiles().size(), 2U);
    const auto& export1 = named(window(), u"profileRow1Export"_s);
    EXPECT_EQ(export1.accessibleName(), u"Export profile"_s);
    EXPECT_EQ(export1.accessibleDescription(), u"AC/DC 1.2"_s);
    EXPECT_EQ(export1.toolTip(), u"Export profile"_s);
    // Accessibility actions bypass the input gate.
    viewModel().isRunningScript = true;
    for (auto* button : window().findChild<ProfileRow*>()->findChildren<QAbstractButton*>())
        button->click();
    for (const QDialog* dialog : window().findChildren<QDialog*>())
        EXPECT_FALSE(dialog->isVisible()) << qPrintable(dialog->objectName());
    viewModel().isRunningScript = false;
}

} // namespace orvanlite::test
