#include "platform/freedesktop/FreedesktopDiskAccess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <array>

#include <unistd.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// polkit does not report which agents are registered, and registering one as a probe would divert other
/// prompts meanwhile. So the running processes are searched. Desktop shells with a built-in agent are known
/// by name.
bool isPromptAgent(const QByteArray& name)
{
    constexpr std::array shells{"gnome-shell", "cinnamon",   "budgie-panel",
                                "phosh",       "cosmic-osd", "enlightenment"};
    const bool isAgent = (name.contains("polkit") || name.contains("policykit")) && name != "polkitd";
    return isAgent || std::find(shells.begin(), shells.end(), name) != shells.end();
}

bool hasPromptAgent(const QDir& processes)
{
    const QFileInfoList running = processes.entryInfoList({u"[0-9]*"_s}, QDir::Dirs);
    return std::any_of(running.begin(), running.end(), [](const QFileInfo& each) {
        // Agents of other users, such as the login screen's, do not prompt this one.
        if (each.ownerId() != ::geteuid())
            return false;
        // Not "comm", which the kernel truncates to 15 characters.
        QFile words(each.filePath() + u"/cmdline"_s);
        if (!words.open(QIODevice::ReadOnly))
            return false; // it has exited
        const QByteArray program = words.readAll().split('\0').first();
        return isPromptAgent(program.sliced(program.lastIndexOf('/') + 1));
    });
}

} // namespace

FreedesktopDiskAccess::FreedesktopDiskAccess(bool isRoot, QString processFolder)
    : m_isRoot(isRoot)
    , m_processFolder(std::move(processFolder))
{}

bool FreedesktopDiskAccess::isGranted() const
{
    return m_isRoot ||
           (!QStandardPaths::findExecutable(u"pkexec"_s).isEmpty() && hasPromptAgent(QDir(m_processFolder)));
}

std::unique_ptr<FullDiskAccess> makeFullDiskAccess(const SystemLayout& /*layout*/)
{
    return std::make_unique<FreedesktopDiskAccess>(::geteuid() == 0, u"/proc"_s);
}

QUrl FreedesktopDiskAccess::settings() const { return QUrl(u"https://wiki.debian.org/PolicyKit"_s); }

} // namespace orvanlite::platform
