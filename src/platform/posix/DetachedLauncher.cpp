#include "platform/posix/DetachedLauncher.h"

#include "platform/FileManager.h"

#include <unistd.h>

#include <QProcess>

#include <cerrno>

namespace orvanlite::platform {

void DetachedLauncher::start(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    // Keep the program away from our terminal.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (process.startDetached())
        return;
    // Qt does not report the reason.
    throw FileError(::access(program.toUtf8().constData(), X_OK) != 0 ? errno : EAGAIN, program);
}

} // namespace orvanlite::platform
