#include "shell/app/InputGate.h"

#include "shell/toolkit/KeyRepeat.h"

#include <QApplication>
#include <QKeyEvent>

namespace orvanlite {

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
    if (isClosed)
        QCoreApplication::instance()->installEventFilter(this);
    else if (QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
}

bool InputGate::eventFilter(QObject* /*watched*/, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride: {
        KeyRepeat::note(*event);
        const auto* key = static_cast<QKeyEvent*>(event);
        return !key->matches(QKeySequence::Close) && !key->matches(QKeySequence::Quit);
    }
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
