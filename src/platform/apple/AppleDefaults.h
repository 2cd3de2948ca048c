#pragma once

#include "platform/Defaults.h"

#include <QHash>

#include <memory>

namespace orvanlite::platform {

class AppleDefaults;

/// The system's user defaults (NSUserDefaults).
class AppleDefaultsStore final : public DefaultsStore {
public:
    AppleDefaultsStore();
    ~AppleDefaultsStore() override;
    [[nodiscard]] Defaults& standard() override;
    [[nodiscard]] Defaults* suite(const QString& name) override;

private:
    std::unique_ptr<AppleDefaults> m_standard;
    QHash<QString, std::shared_ptr<AppleDefaults>> m_suites;
};

} // namespace orvanlite::platform
