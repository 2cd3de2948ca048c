#pragma once

#include <QString>
#include <QUuid>

#include <vector>

namespace orvanlite {

/// One plugin line of a UAD system profile: what Universal Audio says of the user's right to the plugin.
struct UADPluginAuth {
    enum class UADAuthState { demo, authorized, expired, demoNotStarted };

    struct UADAuthStatus {
        UADAuthState state = UADAuthState::demoNotStarted;
        qint64 daysLeft = 0; ///< of a demo only

        /// E.g. "Demo (3 days left)". There is no singular form.
        [[nodiscard]] QString displayString() const;
        bool operator==(const UADAuthStatus&) const = default;
    };

    QUuid id;     ///< new for each parsed line
    QString name; ///< as the profile writes it
    UADAuthStatus status;
    bool isSelected = true;         ///< ticked for the clean-up
    bool isAlreadyDisabled = false; ///< all its files are off

    bool operator==(const UADPluginAuth&) const = default;
};

using UADPluginAuths = std::vector<UADPluginAuth>;

} // namespace orvanlite
