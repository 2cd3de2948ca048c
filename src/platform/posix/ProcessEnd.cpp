#include "platform/posix/ProcessEnd.h"

#include <sys/stat.h>

#include <QProcess>

namespace orvanlite::platform {

ProcessEnd::ProcessEnd(const QProcess& process)
{
    connect(&process, &QProcess::finished, this, &ProcessEnd::reached);
    connect(&process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Q_EMIT reached();
    });
}

void useUsualUmask() { ::umask(S_IWGRP | S_IWOTH); }

} // namespace orvanlite::platform
