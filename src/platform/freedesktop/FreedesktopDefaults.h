#pragma once

#include "platform/Defaults.h"

#include <map>
#include <memory>

namespace orvanlite::platform {

struct SystemLayout;

/// Defaults as INI files in the "Orvanlite" folder of the user's configuration: "defaults.ini", and
/// "{name}.ini" for a suite. Every read checks whether another process has changed the file.
class FreedesktopDefaultsStore final : public DefaultsStore {
public:
    explicit FreedesktopDefaultsStore(const SystemLayout& layout);
    ~FreedesktopDefaultsStore() override;

    [[nodiscard]] Defaults& standard() override;
    [[nodiscard]] Defaults* suite(const QString& name) override;

private:
    QString m_folder;
    std::unique_ptr<Defaults> m_standard;
    std::map<QString, std::unique_ptr<Defaults>> m_suites;
};

} // namespace orvanlite::platform
