#include "platform/freedesktop/FreedesktopDiskAccess.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>

#include <unistd.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// The authority tells nobody which agents have registered with it, so the processes are looked through. The kernel cuts
/// their names to 15 characters. Desktop shells that are their own agent come by name.
bool isPromptAgent(const QByteArray& name)
{
    constexpr std::array shells{"gnome-shell", "cinnamon", "budgie-panel", "phosh", "gala"};
    const bool isAgent = (name.contains("polkit") || name.contains("policykit")) && name != "polkitd";
    return isAgent || std::find(shells.begin(), shells.end(), name) != shells.end();
}

bool hasPromptAgent(const QDir& processes)
{
    const QStringList ids = processes.entryList({u"[0-9]*"_s}, QDir::Dirs);
    return std::any_of(ids.begin(), ids.end(), [&processes](const QString& id) {
        QFile name(processes.filePath(id + u"/comm"_s));
        return name.open(QIODevice::ReadOnly) && isPromptAgent(name.readAll().trimmed());
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
