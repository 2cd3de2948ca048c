#include "platform/SystemLayout.h"

#include "platform/Utf8.h"

#include <pwd.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <QStandardPaths>

#include <cstdlib>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

QString environment(const char* name) { return fromUtf8(std::getenv(name)); }

QString withoutTrailingSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

QString homeFolder()
{
    QString home = environment("HOME");
    if (home.isEmpty()) {
        if (const passwd* user = getpwuid(getuid()))
            home = fromUtf8(user->pw_dir);
    }
    return withoutTrailingSlashes(home);
}

/// A base directory: the variable's value if it is an absolute path, otherwise the default below the home
/// folder, and empty without one.
/// Source: XDG Base Directory Specification.
QString baseDirectory(const char* variable, const QString& home, QStringView fallback)
{
    const QString value = environment(variable);
    if (value.startsWith(u'/'))
        return withoutTrailingSlashes(value);
    return home.isEmpty() ? QString() : QString(home).append(fallback);
}

/// Whether a session's runtime folder can hold the scripts that root runs: it is ours alone, also when somebody has
/// become another user and kept the variable, and programs can be started from it.
/// Source: XDG Base Directory Specification.
bool takesScripts(const QString& runtime)
{
    const QByteArray path = runtime.toUtf8();
    struct stat status {};
    struct statvfs system {};
    return path.startsWith('/') && ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & 07777) == S_IRWXU &&
           ::statvfs(path.constData(), &system) == 0 && (system.f_flag & ST_NOEXEC) == 0;
}

} // namespace

SystemLayout SystemLayout::ofThisMachine()
{
    SystemLayout layout;
    layout.home = homeFolder();
    layout.applicationSupport = baseDirectory("XDG_DATA_HOME", layout.home, u"/.local/share");
    layout.configuration = baseDirectory("XDG_CONFIG_HOME", layout.home, u"/.config");
    layout.cache = baseDirectory("XDG_CACHE_HOME", layout.home, u"/.cache");
    layout.runtime = baseDirectory("XDG_RUNTIME_DIR", layout.home, u"/.cache/run");
    layout.rootRunner = QStringLiteral(ORV_ROOT_RUNNER);
    // Our own folder and not the shared one: there root may be kept from writing another user's file, and the
    // progress counter of a privileged script would fail.
    if (takesScripts(environment("XDG_RUNTIME_DIR")))
        layout.temporary = layout.runtime + u"/Orvanlite/tmp"_s;
    else if (!layout.cache.isEmpty())
        layout.temporary = layout.cache + u"/Orvanlite/tmp"_s;
    if (layout.home.isEmpty())
        return layout; // Qt would take the root folder for it
    // These bear names in the user's language.
    layout.desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    layout.downloads = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    layout.documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return layout;
}

SystemLayout SystemLayout::sandbox(const QString& root)
{
    SystemLayout layout;
    layout.root = root;
    layout.home = root + u"/Users/tester"_s;
    layout.applicationSupport = layout.home + u"/.local/share"_s;
    layout.configuration = layout.home + u"/.config"_s;
    layout.cache = layout.home + u"/.cache"_s;
    layout.runtime = layout.home + u"/.cache/run"_s;
    layout.temporary = layout.cache + u"/Orvanlite/tmp"_s;
    layout.desktop = layout.home + u"/Desktop"_s;
    layout.downloads = layout.home + u"/Downloads"_s;
    layout.documents = layout.home + u"/Documents"_s;
    layout.toolOverrides = root + u"/tools"_s;
    return layout;
}

} // namespace orvanlite::platform
