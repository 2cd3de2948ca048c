#include "shell/toolkit/Control.h"

#include "ShellFixture.h"
#include "profiles/ProfileManager.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/PressButton.h"

#include <QSignalSpy>
#include <QtTest/qtestspontaneevent.h>

namespace orvanlite::test {

class ControlTest : public ShellTest {};

TEST_F(ControlTest, ActionOfAssistiveTechnologyIsTheClick)
{
    m_system.appearance.reduced = true;
    addPlugins(3);
    launch();
    auto& profiles = static_cast<ContentView*>(window().centralWidget())->profileManager();
    viewModel().saveProfile(profiles, u"Mixing"_s);
    for (const QString& section : {u"profilesHeader"_s, u"formatsHeader"_s})
        click(window(), section);
    QSet<QString> seen;
    const auto useControls = [&] {
        settle();
        for (Control* control : window().findChildren<Control*>()) {
            if (!control->isVisible())
                continue;
            SCOPED_TRACE(qPrintable(control->objectName()));
            seen.insert(control->objectName());
            QObject::disconnect(control, &QAbstractButton::clicked, nullptr,
                                nullptr); // keeps the others visible
            const QSignalSpy clicks(control, &QAbstractButton::clicked);
            QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(10, control->height() / 2));
            EXPECT_EQ(clicks.size(), control->isEnabled() ? 1 : 0);
            QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
            EXPECT_EQ(spoken->state().checkable || spoken->state().selectable, control->isCheckable());
            spoken->actionInterface()->doAction(spoken->actionInterface()->actionNames().first());
            EXPECT_EQ(clicks.size(), control->isEnabled() ? 2 : 0);
        }
    };
    table().selectAll();
    useControls();
    viewModel().previewProfile(profiles.profiles->front());
    useControls();
    for (const char16_t* each :
         {u"allPluginsButton", u"formatRowVST3", u"formatsHeader", u"launchAtLoginSwitch", u"formatChipVST3",
          u"bulkRow0", u"bulkRow0Chip0", u"profileRow0", u"previewTabAll", u"closePreviewButton"})
        EXPECT_TRUE(seen.contains(QString::fromUtf16(each))) << qPrintable(QString::fromUtf16(each));
}

TEST_F(ControlTest, HeldKeyPressesOnceWithoutTheFlagOfARepeat)
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
