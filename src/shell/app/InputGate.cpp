#include "shell/app/InputGate.h"

#include "shell/app/MainMenu.h"
#include "shell/toolkit/KeyRepeat.h"

#include <QApplication>
#include <QKeyEvent>
#include <QShortcutEvent>
#include <QWidget>

namespace orvanlite {

namespace {

void closePopups()
{
    QWidget* popup = QApplication::activePopupWidget();
    while (popup && popup->close()) {
        QWidget* below = QApplication::activePopupWidget();
        popup = below == popup ? nullptr : below;
    }
}

/// A menu opened by an accessibility action, which is not an input event.
bool isPopup(QObject* shown)
{
    const auto* widget = qobject_cast<QWidget*>(shown);
    return widget && widget->windowType() == Qt::Popup;
}

} // namespace

InputGate::InputGate(const Observable<bool>& isClosed, QObject* parent)
    : QObject(parent)
{
    isClosed.observe(this, [this, &isClosed] { follow(*isClosed); });
}

InputGate::~InputGate() { follow(false); }

void InputGate::follow(bool isClosed)
{
    if (isClosed == m_isInstalled)
        return;
    m_isInstalled = isClosed;
    if (isClosed) {
        closePopups();
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
        QCoreApplication::instance()->installEventFilter(this);
    } else if (QCoreApplication::instance()) {
        QCoreApplication::instance()->removeEventFilter(this);
        QGuiApplication::restoreOverrideCursor();
    }
}

bool InputGate::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride: {
        KeyRepeat::note(*event);
        return !isClosingKey(QKeySequence(static_cast<QKeyEvent*>(event)->keyCombination()));
    }
    case QEvent::Shortcut:
        return !isClosingKey(static_cast<QShortcutEvent*>(event)->key());
    case QEvent::Show:
        if (isPopup(watched))
            QMetaObject::invokeMethod(this, &closePopups, Qt::QueuedConnection);
        return false;
    // Mouse releases pass, so that a button held when the gate closed is released. No other button can be
    // down.
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace orvanlite
