#include "shell/toolkit/Control.h"

#include "ShellFixture.h"
#include "profiles/ProfileManager.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/PressButton.h"

#include <QDialog>
#include <QSignalSpy>
#include <QtTest/qtestspontaneevent.h>

namespace orvanlite::test {

/// An application of its own, beside another one.
class World final : public ShellTest {
public:
    using ShellTest::window;

    World()
    {
        m_system.appearance.reduced = true;
        addPlugins(3);
        m_root.addFile(u"/Library/Audio/Plug-Ins/Components/Plugin 0000.component"_s);
        launch();
        auto& content = static_cast<ContentView&>(*window().centralWidget());
        viewModel().saveProfile(content.profileManager(), u"Mixing"_s);
    }
    ~World() override { TearDown(); }

    /// Brings the bulk pane back unless a preview is in its place.
    void pick()
    {
        if (viewModel().persistedSelections.isEmpty() && !*viewModel().activeProfile) {
            viewModel().showAllPlugins = true;
            settle();
            table().selectAll();
        }
        settle();
    }
    [[nodiscard]] QList<Control*> controls()
    {
        QList<Control*> visible = window().findChildren<Control*>();
        visible.removeIf([](const Control* each) { return !each->isVisible(); });
        return visible;
    }
    /// Runs what presses a control and describes everything that it may have changed.
    QString after(const std::function<void()>& press)
    {
        press();
        waitFor([this] { return !*viewModel().isRunningScript; });
        settle();
        QStringList state{footer(), shownNames().join(u',')};
        for (auto* dialog : window().findChildren<QDialog*>()) {
            if (!dialog->isVisible())
                continue;
            state.append(dialog->windowTitle());
            dialog->reject();
        }
        settle();
        for (const Control* each : controls())
            state.append(each->objectName() + (each->isChecked() ? u"+ "_s : u"- "_s) + each->label() +
                         each->accessibleDescription());
        return state.join(u'\n');
    }

private:
    void TestBody() override {}
};

TEST(ControlTest, ActionOfAssistiveTechnologyIsTheClick)
{
    World clicked;
    World acted;
    QStringList known;
    QSet<QString> seen;
    const auto next = [&]() -> Control* {
        for (World* world : {&clicked, &acted})
            world->pick();
        // What has just come goes first, and its way out last.
        for (const Control* each : clicked.controls()) {
            if (!known.contains(each->objectName()))
                known.append(each->objectName());
        }
        for (auto name = known.rbegin(); name != known.rend(); ++name) {
            auto* control = clicked.window().findChild<Control*>(*name);
            if (control && control->isVisible() && !seen.contains(*name))
                return control;
        }
        return nullptr;
    };
    while (Control* control = next()) {
        const QString name = control->objectName();
        SCOPED_TRACE(qPrintable(name));
        seen.insert(name);
        auto* twin = acted.window().findChild<Control*>(name);
        ASSERT_TRUE(twin && twin->isVisible());
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(twin);
        ASSERT_EQ(spoken->state().checkable || spoken->state().selectable, twin->isCheckable());
        const QString wanted = clicked.after(
            [&] { QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(10, control->height() / 2)); });
        EXPECT_EQ(acted
                      .after([&] {
                          spoken->actionInterface()->doAction(
                              spoken->actionInterface()->actionNames().first());
                      })
                      .toStdString(),
                  wanted.toStdString());
    }
    for (const char16_t* each :
         {u"allPluginsButton", u"formatRowVST3", u"formatsHeader", u"launchAtLoginSwitch", u"formatChipVST3",
          u"bulkRow0", u"bulkRow0Chip0", u"profileRow0", u"previewTabAll", u"closePreviewButton"})
        EXPECT_TRUE(seen.contains(QString::fromUtf16(each))) << qPrintable(QString::fromUtf16(each));
}

TEST(ControlTest, HeldKeyPressesOnceWithoutTheFlagOfARepeat)
{
    const KeyRepeat repeats;
    PressButton button(u"Scan"_s, {}, PressButton::Ground::none, nullptr);
    button.show();
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    quint64 now = 1'000;
    const auto send = [&](QEvent::Type type, int key, quint64 later) {
        QKeyEvent event(type, key, {});
        event.setTimestamp(now += later);
        QSpontaneKeyEvent::setSpontaneous(&event);
        QCoreApplication::instance()->notify(&button, &event);
    };
    for (const int key : {Qt::Key_Space, Qt::Key_Return}) {
        SCOPED_TRACE(key);
        for (int hold = 1; hold <= 2; ++hold) {
            send(QEvent::KeyPress, key, 300);
            send(QEvent::KeyRelease, key, 400);
            for (int repeat = 0; repeat < 5; ++repeat) {
                send(QEvent::KeyPress, key, repeat % 2);
                send(QEvent::KeyRelease, key, 30);
            }
            EXPECT_EQ(clicks.size(), hold);
        }
        clicks.clear();
    }
}

} // namespace orvanlite::test
