#include "helper/HelperApp.h"

#include "helper/HelperAgent.h"
#include "platform/FileManager.h"
#include "platform/MainBundle.h"
#include "platform/OnlyProcess.h"
#include "platform/Platform.h"

#include <QApplication>
#include <QCryptographicHash>

#include <cstdlib>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// One lock per bundle path: a copy elsewhere must be able to start while the one it replaces is still
/// quitting.
QString lockFile(const platform::Platform& platform)
{
    constexpr qsizetype kEnough = 16;
    const QByteArray pathHash =
        QCryptographicHash::hash(platform.mainBundle.bundlePath().toUtf8(), QCryptographicHash::Sha256);
    return platform.layout.runtime + u"/orvanlite-helper-"_s +
           QString::fromLatin1(pathHash.toHex().first(kEnough)) + u".lock"_s;
}

bool isOnlyOne(const platform::Platform& platform)
{
    try {
        platform.files.createDirectory(platform.layout.runtime);
    } catch (const platform::FileError&) {
        return true; // without the folder, instances cannot detect each other
    }
    return platform::becomeOnlyProcess(lockFile(platform));
}

} // namespace

int runHelper(int& argc, char** argv, const platform::SystemLayout& layout)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Orvanlite Helper"_s);
    QApplication::setDesktopFileName(u"com.yourcompany.Orvanlite"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    const auto services = platform::makePlatformServices(layout, platform::Elevation::none);
    const platform::Platform platform = services->platform();
    if (!isOnlyOne(platform))
        return EXIT_SUCCESS;
    const HelperAgent agent(platform);
    return QApplication::exec();
}

} // namespace orvanlite
