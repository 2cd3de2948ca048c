#include "shell/toolkit/Announce.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QGuiApplication>
#include <QTimer>

#include <chrono>

namespace orvanlite {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto kNotificationName = "announcement";
/// A reader asks for the text when it has time for it.
constexpr auto kLifetime = 10s;

QAccessibleInterface* makeNotification(const QString& className, QObject* object)
{
    if (className != "QWidget"_L1 || object->objectName() != QLatin1StringView(kNotificationName))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Notification);
}

} // namespace

void announce(QWidget* widget, const QString& text)
{
    if (!QAccessible::isActive())
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (QGuiApplication::platformName() == "cocoa"_L1) { // its bridge does not report notifications
        QAccessibleAnnouncementEvent announcement(widget, text);
        QAccessible::updateAccessibility(&announcement);
        return;
    }
#endif
    static const bool isInstalled = (QAccessible::installFactory(makeNotification), true);
    Q_UNUSED(isInstalled)
    // The main window: in a dialog, the dialog's texts would be read as well.
    QWidget* window = widget->window();
    while (window->parentWidget())
        window = window->parentWidget()->window();
    // Readers on Linux ignore alert events. They speak the name of a notification that appears.
    auto* notification = new QWidget(window);
    notification->setObjectName(QLatin1StringView(kNotificationName));
    notification->setAccessibleName(text);
    notification->resize(0, 0);
    notification->show();
    QTimer::singleShot(kLifetime, notification, &QObject::deleteLater);
}

void announceCurrentRow(QAbstractItemView* view)
{
    if (!QAccessible::isActive())
        return;
    // Queued: the focus event of the list itself comes after its focusInEvent().
    QMetaObject::invokeMethod(
        view,
        [view] {
            QAccessibleInterface* list = QAccessible::queryAccessibleInterface(view);
            const QModelIndex current = view->currentIndex();
            if (!view->hasFocus() || !current.isValid() || !list->tableInterface())
                return;
            QAccessibleInterface* cell = list->tableInterface()->cellAt(current.row(), current.column());
            if (!cell)
                return;
            QAccessibleEvent focus(cell, QAccessible::Focus);
            QAccessible::updateAccessibility(&focus);
        },
        Qt::QueuedConnection);
}

} // namespace orvanlite
