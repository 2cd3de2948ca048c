#include "demo/SecondStart.h"

#include "demo/DemoAppearance.h"
#include "operations/PluginManagerViewModel.h"
#include "shell/app/MainWindow.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QTest>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

SecondStart::SecondStart(MainWindow& window, DemoAppearance& appearance, const QString& outputFolder)
    : Stage(window, outputFolder)
    , m_appearance(appearance)
{}

void SecondStart::pictures(const QString& name)
{
    for (const bool isDark : {true, false}) {
        m_appearance.setDark(isDark);
        QTest::qWait(300);
        screenshot(isDark ? name + u"-dark"_s : name, Area::screen);
    }
}

bool SecondStart::run(const std::function<bool()>& isSavedRight)
{
    const bool isNamed = waitFor([this] { return named<QWidget>(u"newPluginsBanner"_s).isVisible(); });
    QTest::qWait(500); // for the slide-in animation
    const QString title = named<QLabel>(u"newPluginsBannerTitle"_s).text();
    step(u"Started again, the banner names the two new plugins"_s,
         isNamed && title == u"2 new plugins detected: Newly Added, Newly Left Out"_s, title);
    pictures(u"new-plugins-banner"_s);
    click(u"newPluginsBannerButton"_s);
    QTest::qWait(200);
    auto& list = named<QAbstractItemView>(u"newPluginsList"_s);
    list.setFocus();
    list.setCurrentIndex(list.model()->index(1, 0));
    QTest::keyClick(&list, Qt::Key_Space);
    pictures(u"new-plugins-sheet"_s);
    click(u"addNewPluginsButton"_s);
    QTest::qWait(600);
    step(u"One is added to the profiles, the other one is known to them as off"_s,
         isSavedRight() && !named<QWidget>(u"newPluginsBanner"_s).isVisible());
    return allSucceeded();
}

} // namespace orvanlite::demo
