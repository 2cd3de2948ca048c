#pragma once

#include <QString>
#include <QUuid>

#include <vector>

namespace orvanlite {

/// One plugin line of a UAD system profile: the user's authorisation for a plugin.
struct UADPluginAuth {
    enum class UADAuthState { demo, authorized, expired, demoNotStarted };

    struct UADAuthStatus {
        UADAuthState state = UADAuthState::demoNotStarted;
        qint64 daysLeft = 0; ///< only for a demo

        /// E.g. "Demo (3 days left)". There is no singular form.
        [[nodiscard]] QString displayString() const;
        bool operator==(const UADAuthStatus&) const = default;
    };

    QUuid id;     ///< new for each parsed line
    QString name; ///< as in the profile
    UADAuthStatus status;
    bool isSelected = true;         ///< for the clean-up
    bool isAlreadyDisabled = false; ///< it has files, and all are disabled

    bool operator==(const UADPluginAuth&) const = default;
};

using UADPluginAuths = std::vector<UADPluginAuth>;

} // namespace orvanlite
