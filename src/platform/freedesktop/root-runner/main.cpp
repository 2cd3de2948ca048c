#include "platform/freedesktop/root-runner/Actions.h"
#include "platform/freedesktop/root-runner/CallingUser.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sysexits.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

using namespace orvanlite::root_runner;

namespace {

/// Drops state inherited from the untrusted caller. Look up the caller first: this clears the environment.
void dropInheritedState()
{
    for (int standard = 0; standard < 3; ++standard) {
        if (::fcntl(standard, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != standard)
            std::abort();
    }
    ::closefrom(3);
    ::clearenv();
    ::umask(S_IWGRP | S_IWOTH);
    // Closing the window during a batch closes our standard error; the batch must continue.
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

/// Started as root by pkexec: executes the application's commands, read from standard input, and nothing
/// else. It grants no rights itself and, as it runs as root, links only system libraries.
int main(int argc, char** argv)
{
    if (argc != 1) {
        std::fprintf(stderr, "Usage: %s <command\n", argc > 0 ? argv[0] : "orvanlite-root-runner");
        return EX_USAGE;
    }
    const Surroundings surroundings = surroundingsOfCaller();
    dropInheritedState();
    try {
        return run(readAll(Descriptor(STDIN_FILENO)), surroundings);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s: %s\n", argv[0], failure.reason.c_str());
        return EX_IOERR;
    }
}
