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

/// The offscreen platform warns about every window.
void dropPlatformNoise(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message)
{
    if (!message.startsWith(u"This plugin does not support"_s))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

/// Large enough for the application's window.
constexpr char kScreen[] = R"({"screens": [{"name": "test", "x": 0, "y": 0, "width": 1600, "height": 1000,
                                "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

} // namespace

/// The same environment for every test: no display, UTC, UTF-8, one style, no settings of the user.
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
    // For the history of file dialogs.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
