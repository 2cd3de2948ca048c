#pragma once

#include <QString>

#include <exception>

namespace orvanlite {

/// What the window says about operations on plugin files: what the current one is doing, or why the last one
/// had no effect.
struct WorkStatus {
    enum class State {
        idle,
        waitingForPassword,
        working,
        notice, ///< outcome of the last operation, shown until the next one
    };

    State state = State::idle;
    QString text; ///< one line for the user; empty while idle

    [[nodiscard]] bool isBusy() const
    {
        return state == State::waitingForPassword || state == State::working;
    }
    bool operator==(const WorkStatus&) const = default;
};

[[nodiscard]] WorkStatus waitingForPassword();
[[nodiscard]] WorkStatus movingPlugins(qsizetype count);
[[nodiscard]] WorkStatus deletingPlugins(qsizetype count);
/// A notice with the reason for a failed operation. States that nothing was changed only where that is
/// certain.
[[nodiscard]] WorkStatus workFailure(const std::exception& thrown);

} // namespace orvanlite
