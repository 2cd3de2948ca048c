#include <QApplication>
#include <QStyleFactory>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

using namespace Qt::StringLiterals;

/// The same surroundings for every test: no display, UTC, UTF-8, one style, no session bus and no search paths of
/// the user who runs them.
int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("TZ", "UTC", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("QT_LOGGING_RULES", "qt.qpa.*=false", 1);
    std::setlocale(LC_ALL, "C.UTF-8");
    testing::InitGoogleTest(&argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
