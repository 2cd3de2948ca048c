#pragma once

#include "platform/ProcessLauncher.h"

namespace orvanlite::platform {

/// Starts programs as daemons: they outlive this process and leave no zombies.
class DetachedLauncher final : public ProcessLauncher {
public:
    void start(const QString& program, const QStringList& arguments) override;
};

} // namespace orvanlite::platform
