#include "shell/app/AppDelegate.h"

#include "operations/Detach.h"
#include "platform/Defaults.h"
#include "platform/MainBundle.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "shell/app/ContentView.h"
#include "shell/app/MainMenu.h"
#include "shell/app/MainWindow.h"
#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/ThemeController.h"
#include "shell/updates/UpdateChecker.h"
#include "uad/UADCleanupManager.h"

#include <QApplication>
#include <QIcon>
#include <QPointer>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kWindowSize(1200, 800);

} // namespace

AppDelegate::AppDelegate(const platform::Platform& platform, const SharedObjects& shared)
    : m_platform(platform)
    , m_shared(shared)
{}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    postLaunchNotification();
    setApplicationIcon();
    m_theme = std::make_unique<ThemeController>(m_platform.appearance);
    m_window = std::make_unique<MainWindow>(m_platform.defaults.standard());
    buildMenuBar(*m_window, m_platform.mainBundle, [this] { checkForUpdates(); });
    m_window->center(kWindowSize);
    // After centring, so that a saved frame takes precedence.
    m_window->setFrameAutosaveName(u"Orvanlite"_s);
    m_window->setWindowTitle(u"Orvanlite"_s);
    m_window->setCentralWidget(new ContentView(m_platform, m_shared));
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void AppDelegate::bringToFront()
{
    if (!m_window)
        return; // still launching: the window is raised once it is created
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    QWidget* sheet = QApplication::activeModalWidget();
    if (sheet)
        sheet->raise();
    (sheet ? sheet : m_window.get())->activateWindow();
}

namespace {

QCoro::Task<> askForUpdates(UpdateChecker* checker, QPointer<QWidget> window, QString version)
{
    co_await checker->checkForUpdates();
    if (*checker->updateAvailable || !window)
        co_return; // the banner shows the update
    tell(window, Tone::information, u"upToDateAlert"_s, u"You're up to date!"_s,
         u"Orvanlite v%1 is the latest version."_s.arg(version));
}

} // namespace

void AppDelegate::checkForUpdates()
{
    const QString version = m_platform.mainBundle.infoText(u"CFBundleShortVersionString"_s).value_or(u"?"_s);
    detach(askForUpdates(&m_shared.updateChecker, m_window->centralWidget(), version));
}

void AppDelegate::cleanUpUADDemos() { m_shared.uadCleanup.startCleanup(); }

void AppDelegate::postLaunchNotification()
{
    const QString version = m_platform.mainBundle.infoText(u"CFBundleShortVersionString"_s).value_or(u"0"_s);
    m_platform.notifications.post(u"com.yourcompany.Orvanlite.appDidLaunch"_s, {{u"version"_s, version}});
}

void AppDelegate::setApplicationIcon()
{
    if (const auto path = m_platform.mainBundle.resource(u"AppIcon"_s, u"icns"_s)) {
        const QIcon icon(*path);
        if (!icon.availableSizes().isEmpty()) {
            QApplication::setWindowIcon(icon);
            return;
        }
    }
    QApplication::setWindowIcon(QIcon(u":/AppIcon.svg"_s));
}

} // namespace orvanlite
