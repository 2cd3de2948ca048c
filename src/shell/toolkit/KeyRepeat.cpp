#include "shell/toolkit/KeyRepeat.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

namespace orvanlite {

namespace {

/// Nobody releases and presses a key again faster than this.
constexpr quint64 kSameInstantMilliseconds = 5;
/// A shorter press does not start repeating.
constexpr quint64 kHeldMilliseconds = 20;

struct {
    int key = 0;
    quint64 pressTime = 0;
    quint64 releaseTime = 0;
    bool isRepeat = false; ///< of the last press
} state;

} // namespace

KeyRepeat::KeyRepeat()
{
    const auto install = [this] { QCoreApplication::instance()->installEventFilter(this); };
    install();
    // Reinstalled to run before filters added since: the accessibility bridge replaces key events by copies
    // without a timestamp.
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, install);
}

bool KeyRepeat::isRepeat(const QKeyEvent& press) { return press.isAutoRepeat() || state.isRepeat; }

void KeyRepeat::note(const QEvent& event)
{
    if (!event.spontaneous() || (event.type() != QEvent::KeyPress && event.type() != QEvent::KeyRelease))
        return;
    const auto& key = static_cast<const QKeyEvent&>(event);
    const quint64 time = key.timestamp();
    if (event.type() == QEvent::KeyRelease) {
        state.releaseTime = time;
        return;
    }
    if (time != 0 && time == state.pressTime && key.key() == state.key)
        return; // the same event, propagating through the widgets
    const bool wasHeld = state.isRepeat || state.releaseTime >= state.pressTime + kHeldMilliseconds;
    state.isRepeat = key.isAutoRepeat() || (time != 0 && key.key() == state.key && wasHeld &&
                                            time <= state.releaseTime + kSameInstantMilliseconds);
    state.key = key.key();
    state.pressTime = time;
}

bool KeyRepeat::eventFilter(QObject* /*watched*/, QEvent* event)
{
    note(*event);
    return false;
}

} // namespace orvanlite
