#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace orvanlite::platform {
class Clock;
}

namespace orvanlite {

/// Listens for a hidden sequence of keys, in all windows of the application, for a short while after it was armed.
/// Keys also reach the focused control; only the one that completes the sequence is swallowed.
class CheatCode final : public QObject {
public:
    static constexpr QStringView uadCheatCode = u"qeqeqeqe";

    /// `matched` runs each time the sequence is complete, after disarmCheatCode().
    CheatCode(platform::Clock& clock, std::function<void()> matched, QObject* parent);

    /// Listens from now on, for 10 seconds at most: less when it was armed shortly before.
    void armCheatCode();
    void disarmCheatCode();

    [[nodiscard]] bool cheatCodeArmed() const { return m_isArmed; }
    /// The last letters and digits that were typed while it was armed.
    [[nodiscard]] QString cheatCodeBuffer() const { return m_typed.join(QString()); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Whether the text of a key completes the sequence.
    [[nodiscard]] bool completes(const QString& text);

    platform::Clock& m_clock;
    std::function<void()> m_matched;
    QStringList m_typed; ///< one character each
    bool m_isArmed = false;
};

} // namespace orvanlite
