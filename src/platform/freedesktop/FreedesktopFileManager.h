#pragma once

#include "platform/posix/PosixFileManager.h"

namespace orvanlite::platform {

/// Files are hidden by listing their names in the folder's ".hidden" file, which file browsers read.
class FreedesktopFileManager final : public PosixFileManager {
public:
    void setHidden(const QString& path) override;

protected:
    void removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                              std::vector<DirectoryEntry>& entries) const override;
};

} // namespace orvanlite::platform
