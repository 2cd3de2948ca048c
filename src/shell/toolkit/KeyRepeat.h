#pragma once

#include <QObject>

class QKeyEvent;

namespace orvanlite {

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
