#pragma once

#include <QObject>

class QKeyEvent;

namespace orvanlite {

/// Tells a held key from one that is pressed again, also where the system's flag is wrong: on X11 a repeat comes as a
/// release and a press of the same instant, and is flagged only if both are in the queue already.
class KeyRepeat final : public QObject {
public:
    KeyRepeat();

    /// Whether the press comes from a key that is held down. An action takes no such press.
    [[nodiscard]] static bool isRepeat(const QKeyEvent& press);
    /// For filters that keep keys from reaching this one.
    static void note(const QEvent& event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace orvanlite
