#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace orvanlite::platform {
class Clock;
}

namespace orvanlite {

/// Detects a hidden key sequence in any window of the application, for a short time after being armed. Keys
/// still reach the focused control; only the one that completes the sequence is swallowed.
class CheatCode final : public QObject {
public:
    static constexpr QStringView uadCheatCode = u"qeqeqeqe";

    /// `matched` runs each time the sequence is complete, after disarmCheatCode().
    CheatCode(platform::Clock& clock, std::function<void()> matched, QObject* parent);

    /// Listens for at most 10 seconds; less if it was armed shortly before.
    void armCheatCode();
    void disarmCheatCode();

    [[nodiscard]] bool cheatCodeArmed() const { return m_isArmed; }
    /// The most recent letters and digits typed while armed.
    [[nodiscard]] QString cheatCodeBuffer() const { return m_typed.join(QString()); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Appends the text of a key; returns whether it completes the sequence.
    [[nodiscard]] bool completes(const QString& text);

    platform::Clock& m_clock;
    std::function<void()> m_matched;
    QStringList m_typed; ///< one character each
    bool m_isArmed = false;
};

} // namespace orvanlite
