#include "platform/SystemLayout.h"

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

QString SystemLayout::centralDisabledDirectory() const { return system(u"/Library/Audio/Plug-Ins/Disabled"); }

QString SystemLayout::aaxDirectory() const
{
    return system(u"/Library/Application Support/Avid/Audio/Plug-Ins");
}

QString SystemLayout::aaxUnusedDirectory() const
{
    return system(u"/Library/Application Support/Avid/Audio/Plug-Ins (Unused)");
}

QString SystemLayout::aaxUnusedDirectoryOfUser() const
{
    return inHome(u"/Library/Application Support/Avid/Audio/Plug-Ins (Unused)");
}

QString SystemLayout::wavesDirectory() const { return system(u"/Applications/Waves"); }

QString SystemLayout::audioPlugInsDirectory() const { return system(u"/Library/Audio/Plug-Ins"); }

QString SystemLayout::uadControlPanel() const
{
    return system(u"/Applications/Universal Audio/UAD Meter & Control Panel.app");
}

bool SystemLayout::isInSystemLibrary(const QString& path) const
{
    // On purpose: a plain prefix test, so a sibling such as "/Library Backup" counts too.
    return path.startsWith(system(u"/Library"));
}

QString SystemLayout::applicationFolder() const { return applicationSupport + u"/Orvanlite"_s; }

QString SystemLayout::audioUnitSystemCache() const
{
    return system(u"/Library/Caches/com.apple.audiounits.cache");
}

QString SystemLayout::machineIdFile() const { return system(u"/etc/machine-id"); }

QString SystemLayout::shell() const
{
    // The real one in a sandbox too: it is only executed.
    return u"/bin/sh"_s;
}

QString SystemLayout::openTool() const { return system(u"/usr/bin/open"); }

QString SystemLayout::chflags() const
{
    // The real one in a sandbox too: it only receives sandbox paths.
    return u"/bin/chflags"_s;
}

} // namespace orvanlite::platform
