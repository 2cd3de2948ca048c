#include "shell/toolkit/Control.h"

#include "ShellFixture.h"
#include "profiles/ProfileManager.h"
#include "profiles/ProfilesFixture.h"
#include "shell/onboarding/OnboardingView.h"
#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/PressButton.h"

#include <QFileDialog>
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
        m_database.replaceAllPlugins({plugin(u"Earlier"_s, true)});
        ProfileManager(m_system.platform).saveProfile(u"Mixing"_s, {});
        addPlugins(3);
        m_root.addFile(u"/Library/Audio/Plug-Ins/Components/Plugin 0000.component"_s);
        launch();
    }
    ~World() override { TearDown(); }

    [[nodiscard]] ContentView& content() { return static_cast<ContentView&>(*window().centralWidget()); }
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
    void press(const QString& name)
    {
        if (auto* button = front().findChild<QAbstractButton*>(name))
            button->click();
        settle();
    }
    void cleanUp(bool isComplete, bool hasProblem)
    {
        m_uadCleanup.cleanupComplete = isComplete;
        m_uadCleanup.errorMessage = hasProblem ? std::optional(u"Problem"_s) : std::nullopt;
        m_uadCleanup.demoPlugins = UADPluginAuths{{QUuid::createUuid(), u"X"_s, {}}};
        m_uadCleanup.showCleanupSheet = true;
        settle();
    }
    void welcome(int page)
    {
        (new OnboardingView(m_system.platform, m_diskAccess, &window()))->open();
        for (int i = 0; i < page; ++i)
            press(u"onboardingNextButton"_s);
    }
    /// The dialog in front, otherwise the window.
    [[nodiscard]] QWidget& front()
    {
        for (auto* dialog : window().findChildren<QDialog*>()) {
            if (dialog->isVisible())
                return *dialog;
        }
        return window();
    }
    [[nodiscard]] bool isInFront() { return &front() == &window(); }
    [[nodiscard]] QList<QAbstractButton*> buttons()
    {
        QList<QAbstractButton*> visible = front().findChildren<QAbstractButton*>();
        visible.removeIf(
            [](const QAbstractButton* each) { return !each->isVisible() || !each->isEnabled(); });
        return visible;
    }
    /// Runs what presses a button and describes everything that it may have changed.
    QString after(QPointer<QAbstractButton> button, const std::function<void()>& press)
    {
        press();
        waitFor([&] {
            return !*viewModel().isRunningScript && !*m_uadCleanup.isLoading && !(button && button->isDown());
        });
        settle();
        const QString before = state();
        for (auto* dialog : window().findChildren<QDialog*>()) {
            if (dialog->isVisible())
                dialog->reject();
        }
        settle();
        return before + state();
    }

private:
    QString state()
    {
        QStringList state{front().windowTitle(), footer(), shownNames().join(u',')};
        if (qobject_cast<QFileDialog*>(&front()))
            return state.join(u'\n'); // the rest names the root
        for (const auto* each : buttons())
            state.append(each->objectName() + (each->isChecked() ? u"+ "_s : u"- "_s) + each->text() +
                         each->accessibleDescription());
        for (const auto* each : front().findChildren<QLabel*>()) {
            if (each->isVisible())
                state.append(each->text());
        }
        return state.join(u'\n');
    }
    void TestBody() override {}
};

struct Stage {
    std::function<void(World&)> open;
    QStringList buttons; ///< some that it must have
    bool isDialog = true;
};

/// Presses every button of the stage, in one application by a click, in the other by the accessible action.
void compare(const Stage& stage)
{
    auto clicked = std::make_unique<World>();
    auto acted = std::make_unique<World>();
    QStringList known;
    QSet<QString> seen;
    const auto next = [&]() -> QAbstractButton* {
        for (auto* world : {&clicked, &acted}) {
            if ((*world)->isInFront())
                stage.open(**world);
            if (!stage.isDialog || !(*world)->isInFront())
                continue;
            *world = std::make_unique<World>(); // the other one cannot come to this stage any more
            stage.open(**world);
        }
        // What has just come goes first, and its way out last.
        const auto buttons = clicked->buttons();
        for (const auto* each : buttons) {
            if (!known.contains(each->objectName()))
                known.append(each->objectName());
        }
        for (auto name = known.rbegin(); name != known.rend(); ++name) {
            for (auto* each : buttons) {
                if (each->objectName() == *name && !seen.contains(*name))
                    return each;
            }
        }
        return nullptr;
    };
    while (QAbstractButton* button = next()) {
        const QString name = button->objectName();
        SCOPED_TRACE(qPrintable(name));
        seen.insert(name);
        auto* twin = acted->front().findChild<QAbstractButton*>(name);
        ASSERT_TRUE(twin && twin->isVisible());
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(twin);
        const QAccessible::State state = spoken->state();
        ASSERT_EQ(state.checkable || state.selectable || state.expandable, twin->isCheckable());
        const QString wanted = clicked->after(
            button, [&] { QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2)); });
        EXPECT_EQ(acted
                      ->after(twin,
                              [&] {
                                  spoken->actionInterface()->doAction(
                                      spoken->actionInterface()->actionNames().first());
                              })
                      .toStdString(),
                  wanted.toStdString());
    }
    for (const QString& each : stage.buttons)
        EXPECT_TRUE(seen.contains(each)) << qPrintable(each);
}

TEST(ControlTest, ActionOfAssistiveTechnologyIsTheClick)
{
    const auto pressing = [](const QString& button) {
        return [button](World& world) {
            world.pick();
            world.press(button);
        };
    };
    const auto cleaning = [](bool isComplete, bool hasProblem) {
        return [=](World& world) { world.cleanUp(isComplete, hasProblem); };
    };
    const auto welcoming = [](int page) { return [page](World& world) { world.welcome(page); }; };
    const Stage stages[] = {
        {[](World& world) { world.pick(); },
         {u"allPluginsButton"_s, u"formatRowVST3"_s, u"formatsHeader"_s, u"launchAtLoginSwitch"_s,
          u"formatChipVST3"_s, u"bulkRow0"_s, u"bulkRow0Chip0"_s, u"profileRow0"_s, u"previewTabAll"_s,
          u"closePreviewButton"_s, u"newPluginsBannerDismiss"_s},
         false},
        {pressing(u"exportButton"_s),
         {u"exportFormatPDF"_s, u"exportSort Version"_s, u"exportCancelButton"_s, u"exportConfirmButton"_s}},
        {pressing(u"newPluginsBannerButton"_s),
         {u"newPluginsChip VST3"_s, u"newPluginsAllProfilesButton"_s, u"skipNewPluginsButton"_s}},
        {cleaning(true, false), {u"cleanupDoneButton"_s, u"closeCleanupButton"_s}},
        {cleaning(false, true), {u"cleanupTryAgainButton"_s, u"cleanupProblemCancelButton"_s}},
        {cleaning(false, false), {u"noDemosButton"_s, u"disableDemosButton"_s, u"cleanupCancelButton"_s}},
        {welcoming(1), {u"onboardingBackButton"_s, u"onboardingNextButton"_s}},
        {welcoming(5), {u"onboardingStartButton"_s}},
        {pressing(u"saveProfileButton"_s), {u"cancelButton"_s}},
        {pressing(u"deleteSelectedButton"_s), {u"confirmButton"_s}},
        {[](World& world) { world.content().showingError = true; }, {u"okButton"_s}},
    };
    for (const Stage& stage : stages) {
        SCOPED_TRACE(qPrintable(stage.buttons.front()));
        compare(stage);
    }
}

TEST(ControlTest, HeldKeyPressesOnceWithoutTheFlagOfARepeat)
{
    const KeyRepeat repeats;
    PressButton button(u"Scan"_s, {}, PressButton::Ground::none, nullptr);
    button.show();
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    quint64 now = 1'000;
    QWidget* target = &button;
    const auto send = [&](QEvent::Type type, int key, quint64 later) {
        QKeyEvent event(type, key, {});
        event.setTimestamp(now += later);
        QSpontaneKeyEvent::setSpontaneous(&event);
        QCoreApplication::instance()->notify(target, &event);
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
    bool isConfirmed = false;
    send(QEvent::KeyPress, Qt::Key_Return, 300);
    const QDialog* question =
        ask(&button, {u"question"_s, u"Apply?"_s, {}, u"Apply"_s, false}, [&] { isConfirmed = true; });
    target = &named<QWidget>(*question, u"confirmButton"_s);
    send(QEvent::KeyRelease, Qt::Key_Return, 400);
    send(QEvent::KeyPress, Qt::Key_Return, 0);
    EXPECT_FALSE(isConfirmed) << "the held key that opened the question";
    send(QEvent::KeyRelease, Qt::Key_Return, 30);
    send(QEvent::KeyPress, Qt::Key_Return, 300);
    EXPECT_TRUE(isConfirmed);
}

} // namespace orvanlite::test
