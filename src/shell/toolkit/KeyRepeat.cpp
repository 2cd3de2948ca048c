#include "shell/toolkit/KeyRepeat.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <deque>

namespace orvanlite {

namespace {

/// Nobody releases and presses a key again faster than this.
constexpr quint64 kSameInstantMilliseconds = 5;
/// A shorter press does not start repeating.
constexpr quint64 kHeldMilliseconds = 20;
/// The accessibility bridge posts the copy of a key earlier than this, or never.
constexpr quint64 kCopyMilliseconds = 2'000;

struct Press {
    int key = 0;
    quint64 time = 0;
    bool isRepeat = false;
};

struct {
    Press last;
    quint64 releaseTime = 0;
    std::deque<Press> withBridge; ///< swallowed by the accessibility bridge, copies not yet posted
    bool isRepeat = false;        ///< of the press that is being delivered
} state;

void takeFromBridge(int key)
{
    while (!state.withBridge.empty()) {
        const Press press = state.withBridge.front();
        state.withBridge.pop_front(); // others were commands of the reader
        if (press.key != key)
            continue;
        state.isRepeat = press.isRepeat;
        return;
    }
}

} // namespace

void keepFirst(QObject& filter, const QEvent& event)
{
    // Precedes each press, and the bridge lets it through.
    if (event.type() == QEvent::ShortcutOverride)
        QCoreApplication::instance()->installEventFilter(&filter);
}

KeyRepeat::KeyRepeat() { QCoreApplication::instance()->installEventFilter(this); }

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
    const Press last = state.last;
    if (time != 0 && time == last.time && key.key() == last.key)
        return; // the same event, propagating through the widgets
    const bool wasHeld = last.isRepeat || state.releaseTime >= last.time + kHeldMilliseconds;
    state.isRepeat = key.isAutoRepeat() || (time != 0 && key.key() == last.key && wasHeld &&
                                            time <= state.releaseTime + kSameInstantMilliseconds);
    state.last = {key.key(), time, state.isRepeat};
}

bool KeyRepeat::eventFilter(QObject* watched, QEvent* event)
{
    keepFirst(*this, *event);
    note(*event);
    if (event->type() != QEvent::KeyPress)
        return false;
    if (!watched->isWindowType()) {
        if (event->spontaneous())
            state.withBridge.clear(); // the bridge is not active
    } else if (!event->spontaneous()) {
        takeFromBridge(static_cast<QKeyEvent*>(event)->key());
    } else {
        std::erase_if(state.withBridge,
                      [](const Press& each) { return each.time + kCopyMilliseconds < state.last.time; });
        state.withBridge.push_back(state.last);
    }
    return false;
}

} // namespace orvanlite
