#pragma once

#include "platform/Workspace.h"

namespace orvanlite::platform {

/// The applications of the user's session (NSWorkspace).
class AppleWorkspace final : public Workspace {
public:
    bool open(const QUrl& url) override;
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    void openApplication(const QString& bundlePath) override;
    void terminate(const RunningApplication& application) override;
};

} // namespace orvanlite::platform
