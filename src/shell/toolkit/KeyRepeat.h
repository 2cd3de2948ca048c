#pragma once

#include <QObject>

class QKeyEvent;

namespace orvanlite {

/// Keeps an event filter of the application in front of the accessibility bridge, if called with every event
/// of the filter. While a screen reader listens, the bridge swallows each key and later posts a copy, which
/// is not spontaneous and has no timestamp; whenever a reader changes its subscriptions, it moves to the
/// front.
void keepFirst(QObject& filter, const QEvent& event);

/// Distinguishes a held key from repeated presses, even where the auto-repeat flag is wrong: on X11 a repeat
/// arrives as a release and a press with the same time, flagged only if both are already in the queue.
class KeyRepeat final : public QObject {
public:
    KeyRepeat();

    /// Whether the press comes from a held key. Actions ignore such presses.
    [[nodiscard]] static bool isRepeat(const QKeyEvent& press);
    /// For event filters that swallow keys before they reach this one.
    static void note(const QEvent& event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace orvanlite
