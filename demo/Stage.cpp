#include "demo/Stage.h"

#include "model/Console.h"
#include "operations/PluginManagerViewModel.h"
#include "shell/app/ContentView.h"
#include "shell/app/MainWindow.h"

#include <QDir>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QWindow>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

Stage::Stage(MainWindow& window, QString outputFolder)
    : m_window(window)
    , m_viewModel(qobject_cast<ContentView*>(window.centralWidget())->pluginManager())
    , m_outputFolder(std::move(outputFolder))
{
    QDir().mkpath(m_outputFolder);
}

QWidget* Stage::find(const QString& objectName) const
{
    // A dialog that is closing may still exist: prefer visible widgets.
    QWidget* hidden = nullptr;
    for (QWidget* each : m_window.findChildren<QWidget*>(objectName)) {
        if (each->isVisible())
            return each;
        hidden = each;
    }
    return hidden;
}

void Stage::step(const QString& title, bool succeeded, const QString& detail)
{
    m_allSucceeded = m_allSucceeded && succeeded;
    const QString result = succeeded ? u"ok      "_s : u"FAILED  "_s;
    printLine(result + title + (detail.isEmpty() ? QString() : u": "_s + detail));
}

void Stage::screenshot(const QString& name, Area area)
{
    if (area == Area::window)
        QTest::qWait(150);
    const QRect frame = m_window.geometry();
    const QPixmap image = area == Area::window ? m_window.screen()->grabWindow(m_window.winId())
                                               : m_window.screen()->grabWindow(0, frame.x(), frame.y(),
                                                                               frame.width(), frame.height());
    const QString file = m_outputFolder + u'/' + name + u".png"_s;
    step(u"Screenshot"_s, !image.isNull() && image.save(file), file);
}

void Stage::click(const QString& objectName)
{
    QTest::mouseClick(&named<QWidget>(objectName), Qt::LeftButton);
}

void Stage::typeSearch(const QString& text)
{
    auto& field = named<QLineEdit>(u"searchField"_s);
    const bool changes = field.text() != text;
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Backspace);
    QTest::keyClicks(&field, text);
    // The list reloads 50 ms after the last key, later on a busy machine.
    bool hasFollowed = !changes;
    QObject context;
    m_viewModel.displayedPlugins.observe(&context, [&hasFollowed] { hasFollowed = true; });
    waitFor([&hasFollowed] { return hasFollowed; });
    QTest::qWait(50); // until the window shows the list
}

void Stage::saveProfile(const QString& name)
{
    click(u"saveProfileButton"_s);
    auto& field = named<QLineEdit>(u"textField"_s);
    QTest::keyClicks(&field, name);
    QTest::keyClick(&field, Qt::Key_Return);
    QTest::qWait(100);
}

bool Stage::waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

} // namespace orvanlite::demo
