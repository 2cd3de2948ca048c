#include <paths.h>
#include <sysexits.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

/// What the system's password prompt is asked to start: runs its one argument as a shell's command, in the same
/// process, so that output and end are the command's own. It is a program of its own because the prompt's words
/// are bound to a path, and those bound to the shell would speak for every program of the machine. It gives no
/// rights by itself and links nothing, as root runs it.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: %s <command>\n", argc > 0 ? argv[0] : "orvanlite-root-runner");
        return EX_USAGE;
    }
    ::execl(_PATH_BSHELL, _PATH_BSHELL, "-c", argv[1], nullptr);
    std::fprintf(stderr, "%s: %s\n", _PATH_BSHELL, std::strerror(errno));
    return EX_OSERR;
}
