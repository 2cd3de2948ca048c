#include <paths.h>
#include <sys/stat.h>
#include <sysexits.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

/// What the system's password prompt is asked to start: becomes a shell that reads its commands from standard input. It
/// is a program of its own because the prompt's words are bound to a path, and those bound to the shell would speak for
/// every program of the machine. It gives no rights by itself and links nothing, as root runs it.
int main(int argc, char** argv)
{
    if (argc != 1) {
        std::fprintf(stderr, "Usage: %s <command\n", argc > 0 ? argv[0] : "orvanlite-root-runner");
        return EX_USAGE;
    }
    ::umask(S_IWGRP | S_IWOTH);
    ::execl(_PATH_BSHELL, _PATH_BSHELL, nullptr);
    std::fprintf(stderr, "%s: %s\n", _PATH_BSHELL, std::strerror(errno));
    return EX_OSERR;
}
