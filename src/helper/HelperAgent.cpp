#include "helper/HelperAgent.h"

#include "helper/CountIcon.h"
#include "model/TextOrder.h"
#include "platform/Defaults.h"
#include "platform/MainBundle.h"
#include "platform/NotificationCenter.h"
#include "platform/StatusArea.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"

#include <QApplication>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

const QString kSuite = u"com.yourcompany.Orvanlite"_s;
const QString kCountKey = u"enabledPluginCount"_s;
constexpr QStringView kPathInApplication = u"/Contents/Library/LoginItems/OrvanliteHelper.app";

QString countText(std::optional<int> count)
{
    if (!count)
        return u"Plugins not counted yet"_s;
    return *count == 1 ? u"1 plugin enabled"_s : u"%1 plugins enabled"_s.arg(*count);
}

} // namespace

HelperAgent::HelperAgent(const platform::Platform& platform)
    : m_platform(platform)
    , m_monitor(platform.files, platform.layout)
    , m_countLine(m_menu.addAction(QString()))
    , m_openApplication(new QAction(u"Open Orvanlite"_s, this))
{
    createMenu();
    readCount();
    connect(&m_monitor, &PluginFolderMonitor::found, this, &HelperAgent::notifyUser);
    for (const QString& name :
         {u"com.yourcompany.Orvanlite.pluginCountChanged"_s, u"com.yourcompany.Orvanlite.appDidLaunch"_s})
        m_platform.notifications.observe(name, this, [this](const QVariantMap&) { readCount(); });
    platform::whenStatusAreaIsReady(this, [this] { showItem(); });
}

void HelperAgent::createMenu()
{
    m_countLine->setEnabled(false);
    m_menu.addSeparator();
    if (!applicationPath().isEmpty())
        m_menu.addAction(m_openApplication);
    m_menu.addAction(u"Quit Helper"_s, qApp, &QApplication::quit);
    connect(m_openApplication, &QAction::triggered, this, &HelperAgent::openApplication);
    connect(&m_menu, &QMenu::aboutToShow, this,
            [this] { m_openApplication->setEnabled(!applicationRuns()); });
}

void HelperAgent::showItem()
{
    m_item = std::make_unique<QSystemTrayIcon>();
    m_item->setContextMenu(&m_menu);
    if (!platform::clickOpensStatusMenu()) {
        connect(m_item.get(), &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    if (reason == QSystemTrayIcon::Trigger)
                        openApplication(); // not via the menu item, whose enabled state may be stale
                });
    }
    showCount();
    m_item->show();
}

void HelperAgent::readCount()
{
    std::optional<int> count;
    if (const platform::Defaults* suite = m_platform.defaults.suite(kSuite)) {
        bool isNumber = false;
        const int number = suite->value(kCountKey).toInt(&isNumber);
        if (isNumber && number >= 0)
            count = number;
    }
    m_count = count;
    showCount();
}

void HelperAgent::showCount()
{
    const QString text = countText(m_count);
    m_countLine->setText(text);
    if (!m_item || m_item->toolTip() == text)
        return; // the application also notifies on every search keystroke
    m_item->setToolTip(text);
    m_item->setIcon(countIcon(m_count));
}

void HelperAgent::openApplication()
{
    if (!applicationPath().isEmpty() && !applicationRuns())
        m_platform.workspace.openApplication(applicationPath());
}

void HelperAgent::notifyUser(const std::vector<FoundPlugin>& plugins)
{
    constexpr qsizetype kMostNames = 3;
    QStringList names;
    for (const FoundPlugin& plugin : plugins)
        names.append(plugin.name + u" ("_s + rawValue(plugin.format) + u')');
    std::stable_sort(names.begin(), names.end(), [](const QString& left, const QString& right) {
        return localizedCompare(left, right) < 0;
    });
    QString body = names.first(std::min(names.size(), kMostNames)).join(u", "_s);
    if (names.size() > kMostNames)
        body += u" and %1 more"_s.arg(names.size() - kMostNames);
    const QString title =
        plugins.size() == 1 ? u"New plugin found"_s : u"%1 new plugins found"_s.arg(plugins.size());
    m_platform.userNotifications.show(title, body);
}

QString HelperAgent::applicationPath() const
{
    const QString own = m_platform.mainBundle.bundlePath();
    return own.endsWith(kPathInApplication) ? own.chopped(kPathInApplication.size()) : QString();
}

bool HelperAgent::applicationRuns() const
{
    const auto running = m_platform.workspace.runningApplications();
    return std::any_of(running.begin(), running.end(),
                       [path = applicationPath()](const platform::RunningApplication& each) {
                           return each.bundlePath == path;
                       });
}

} // namespace orvanlite
