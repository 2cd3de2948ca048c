#pragma once

#include "platform/posix/PosixFileManager.h"

namespace orvanlite::platform {

/// A file is hidden by a line with its name in the ".hidden" file of its folder, which file browsers read.
class FreedesktopFileManager final : public PosixFileManager {
public:
    void setHidden(const QString& path) override;

protected:
    void removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                              std::vector<DirectoryEntry>& entries) const override;
};

} // namespace orvanlite::platform
