#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// The offscreen platform says of every window what it cannot do.
void dropPlatformNoise(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message)
{
    if (!message.startsWith(u"This plugin does not support"_s))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

/// A screen that the application's window fits on.
constexpr char kScreen[] = R"({"screens": [{"name": "test", "x": 0, "y": 0, "width": 1600, "height": 1000,
                                "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

} // namespace

/// The same surroundings for every test: no display, UTC, UTF-8, one style, no session bus and no search paths of
/// the user who runs them.
int main(int argc, char** argv)
{
    QTemporaryFile screen;
    if (!screen.open() || screen.write(kScreen) < 0 || !screen.flush())
        return EXIT_FAILURE;
    setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen.fileName().toUtf8()).constData(), 1);
    setenv("TZ", "UTC", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("QT_LOGGING_RULES", "qt.qpa.*=false", 1);
    std::setlocale(LC_ALL, "C.UTF-8");
    qInstallMessageHandler(dropPlatformNoise);
    // File dialogs keep their history there.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
