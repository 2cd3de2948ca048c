#include "shell/app/MainMenu.h"

#include "platform/MainBundle.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

#include <array>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

QKeySequence closeKey() { return QKeySequence(u"Ctrl+W"_s); }
QKeySequence quitKey() { return QKeySequence(u"Ctrl+Q"_s); }

/// A system with a global menu bar also provides the entries that hide applications.
bool systemHasApplicationMenu() { return QGuiApplication::platformName() == u"cocoa"_s; }

QAction* addEntry(QMenu* menu, const QString& title, const QKeySequence& key, const QString& objectName)
{
    QAction* action = menu->addAction(title);
    action->setShortcut(key);
    action->setObjectName(objectName);
    return action;
}

void showAboutPanel(QMainWindow& window, const platform::MainBundle& bundle)
{
    const QString version = bundle.infoText(u"CFBundleShortVersionString"_s).value_or(u"0"_s);
    auto* panel =
        new QMessageBox(QMessageBox::NoIcon, u"About Orvanlite"_s, u"Orvanlite"_s, QMessageBox::Ok, &window);
    panel->setObjectName(u"aboutPanel"_s);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setInformativeText(u"Version %1\n\nAudio Plugin Management"_s.arg(version));
    panel->setIconPixmap(QApplication::windowIcon().pixmap(64, 64));
    panel->open();
}

void addHidingEntries(QMenu* menu, QMainWindow& window)
{
    QAction* hide = addEntry(menu, u"Hide Orvanlite"_s, QKeySequence(u"Ctrl+H"_s), u"hideAction"_s);
    QObject::connect(hide, &QAction::triggered, &window, &QWidget::showMinimized);
    QAction* others = addEntry(menu, u"Hide Others"_s, QKeySequence(u"Ctrl+Alt+H"_s), u"hideOthersAction"_s);
    others->setEnabled(false); // other windows cannot be hidden on this system
    QAction* show = addEntry(menu, u"Show All"_s, {}, u"showAllAction"_s);
    QObject::connect(show, &QAction::triggered, &window, [&window] {
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.raise();
        window.activateWindow();
    });
    menu->addSeparator();
}

void addApplicationMenu(QMenuBar* bar, QMainWindow& window, const platform::MainBundle& bundle,
                        std::function<void()> checkForUpdates)
{
    QMenu* menu = bar->addMenu(u"&Orvanlite"_s);
    QAction* about = addEntry(menu, u"About Orvanlite"_s, {}, u"aboutAction"_s);
    about->setMenuRole(QAction::AboutRole);
    QObject::connect(about, &QAction::triggered, &window,
                     [&window, &bundle] { showAboutPanel(window, bundle); });
    menu->addSeparator();
    if (!systemHasApplicationMenu())
        addHidingEntries(menu, window);
    QAction* updates = addEntry(menu, u"Check for Updates…"_s, {}, u"checkForUpdatesAction"_s);
    updates->setMenuRole(QAction::ApplicationSpecificRole);
    QObject::connect(updates, &QAction::triggered, &window, std::move(checkForUpdates));
    menu->addSeparator();
    QAction* quit = addEntry(menu, u"Quit Orvanlite"_s, quitKey(), u"quitAction"_s);
    quit->setMenuRole(QAction::QuitRole);
    QObject::connect(quit, &QAction::triggered, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

struct EditEntry {
    QString title;
    const char* slot; ///< of the focused control
    QString key;
};

/// Invokes the slot on the focused control if it has one, like a responder chain.
void sendToFocus(const char* slot)
{
    QWidget* focus = QApplication::focusWidget();
    if (focus && focus->metaObject()->indexOfMethod(QByteArray(slot) + "()") >= 0)
        QMetaObject::invokeMethod(focus, slot);
}

void addEditMenu(QMenuBar* bar, QMainWindow& window)
{
    const std::array<EditEntry, 6> entries{{{u"Undo"_s, "undo", u"Ctrl+Z"_s},
                                            {u"Redo"_s, "redo", u"Ctrl+Shift+Z"_s},
                                            {u"Cut"_s, "cut", u"Ctrl+X"_s},
                                            {u"Copy"_s, "copy", u"Ctrl+C"_s},
                                            {u"Paste"_s, "paste", u"Ctrl+V"_s},
                                            {u"Select All"_s, "selectAll", u"Ctrl+A"_s}}};
    QMenu* menu = bar->addMenu(u"&Edit"_s);
    for (const EditEntry& entry : entries) {
        QAction* action = addEntry(menu, entry.title, QKeySequence(entry.key),
                                   QString::fromLatin1(entry.slot) + u"Action"_s);
        QObject::connect(action, &QAction::triggered, &window, [slot = entry.slot] { sendToFocus(slot); });
        if (entry.title == u"Redo"_s)
            menu->addSeparator();
    }
}

void addWindowMenu(QMenuBar* bar, QMainWindow& window)
{
    QMenu* menu = bar->addMenu(u"&Window"_s);
    QAction* minimize = addEntry(menu, u"Minimize"_s, QKeySequence(u"Ctrl+M"_s), u"minimizeAction"_s);
    QObject::connect(minimize, &QAction::triggered, &window, &QWidget::showMinimized);
    QAction* zoom = addEntry(menu, u"Zoom"_s, {}, u"zoomAction"_s);
    QObject::connect(zoom, &QAction::triggered, &window,
                     [&window] { window.setWindowState(window.windowState() ^ Qt::WindowMaximized); });
    menu->addSeparator();
    QAction* close = addEntry(menu, u"Close Window"_s, closeKey(), u"closeWindowAction"_s);
    QObject::connect(close, &QAction::triggered, &window, &QWidget::close);
}

} // namespace

bool isClosingKey(const QKeySequence& key) { return key == closeKey() || key == quitKey(); }

void buildMenuBar(QMainWindow& window, const platform::MainBundle& bundle,
                  std::function<void()> checkForUpdates)
{
    QMenuBar* bar = window.menuBar();
    bar->setObjectName(u"mainMenu"_s);
    addApplicationMenu(bar, window, bundle, std::move(checkForUpdates));
    addEditMenu(bar, window);
    addWindowMenu(bar, window);
}

} // namespace orvanlite
