#include "ShellFixture.h"

#include <QDialog>
#include <QScrollBar>

namespace orvanlite::test {

namespace {

/// Opens the sections, the bulk pane and the dialog of the button, and returns the dialog.
QDialog& arrange(MainWindow& window, const QString& button)
{
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
    for (const QString& name : {u"resetButton"_s, u"allPluginsButton"_s, u"profilesHeader"_s,
                                u"formatsHeader"_s, u"recentHeader"_s}) {
        named(window, name).click();
        settle();
    }
    if (button.startsWith(u"disableSelected"_s))
        named<PluginTableView>(window, u"pluginTable"_s).selectAll();
    settle();
    window.resize(1000, 700);
    named(window, button).setFocus();
    named(window, button).click();
    settle();
    for (QDialog* dialog : window.findChildren<QDialog*>()) {
        if (dialog->isVisible())
            return *dialog;
    }
    qFatal("%s opens nothing", qPrintable(button));
}

/// The fonts and sizes of all visible widgets, and a picture, all scrolled to the top.
std::pair<std::string, QImage> look(QWidget& window)
{
    const QList<QScrollBar*> bars = window.findChildren<QScrollBar*>();
    // A late activation of the window scrolls to its focus.
    EXPECT_TRUE(waitFor([&bars] {
        for (QScrollBar* bar : bars)
            bar->setValue(0);
        settle();
        return std::all_of(bars.begin(), bars.end(), [](const QScrollBar* bar) { return bar->value() == 0; });
    }));
    QStringList all;
    for (const QWidget* each : window.findChildren<QWidget*>()) {
        const QString line = u"%1 %2x%3 %4"_s.arg(QLatin1StringView(each->metaObject()->className()))
                                 .arg(each->width())
                                 .arg(each->height())
                                 .arg(each->font().toString());
        if (each->isVisible())
            all.append(line);
    }
    return {all.join(u'\n').toStdString(), window.grab().toImage()};
}

} // namespace

class AppearanceChangeTest : public ShellTest {
protected:
    AppearanceChangeTest()
    {
        m_system.appearance.reduced = true;
        m_system.appearance.dark = false;
    }
    void TearDown() override
    {
        ShellTest::TearDown();
        QApplication::setPalette(m_before);
    }

    QPalette m_before = QApplication::palette();
};

/// Nothing is left of the previous colours and sizes: the windows look as if opened after the change.
TEST_F(AppearanceChangeTest, LeavesNoTrace)
{
    addPlugins(12);
    launch();
    std::vector<std::unique_ptr<AppDelegate>> others; // until the end: the style goes with the last one
    for (const QString& button : {u"exportButton"_s, u"saveProfileButton"_s, u"disableFilteredButton"_s,
                                  u"disableSelectedButton"_s}) {
        SCOPED_TRACE(qPrintable(button));
        QDialog& changed = arrange(window(), button);
        const FontScale large(1.6);
        m_system.appearance.dark = true;
        m_system.appearance.accent = platform::Rgb{1, 0.5, 0};
        m_system.appearance.notify();
        settle();
        const auto changedDialog = look(changed);
        const auto changedWindow = look(window());
        AppDelegate& another =
            *others.emplace_back(std::make_unique<AppDelegate>(m_system.platform, m_shared));
        another.applicationDidFinishLaunching();
        QDialog& fresh = arrange(*another.window(), button);
        for (const auto& [before, after] :
             {std::pair{look(fresh), changedDialog}, {look(*another.window()), changedWindow}}) {
            EXPECT_EQ(before.first, after.first);
            EXPECT_TRUE(before.second == after.second) << "another picture";
        }
        changed.reject();
        settle();
        m_system.appearance.dark = false;
        m_system.appearance.accent.reset();
        m_system.appearance.notify();
        settle();
    }
}

} // namespace orvanlite::test
