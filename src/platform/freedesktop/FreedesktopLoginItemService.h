#pragma once

#include "platform/LoginItemService.h"

namespace orvanlite::platform {

class FileManager;
struct SystemLayout;

/// Login items as desktop entries "{identifier}.desktop" in the user's autostart folder. An entry that the
/// user disabled in the session's settings requires approval.
/// Source: Desktop Application Autostart Specification, Desktop Entry Specification.
class FreedesktopLoginItemService final : public LoginItemService {
public:
    FreedesktopLoginItemService(FileManager& files, const SystemLayout& layout);

    [[nodiscard]] LoginItemStatus status(const QString& identifier) const override;
    void registerItem(const QString& identifier, const QString& bundlePath) override;
    void unregisterItem(const QString& identifier) override;

private:
    [[nodiscard]] QString entryPath(const QString& identifier) const;

    FileManager& m_files;
    QString m_folder;
};

/// The path as the only word of an "Exec" line: quoted for the command, then escaped as a string value.
[[nodiscard]] QString desktopEntryExec(const QString& path);

} // namespace orvanlite::platform
