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

/// Whoever starts us chooses what we inherit. The caller is asked for before.
void leaveInheritance()
{
    for (int standard = 0; standard < 3; ++standard) {
        if (::fcntl(standard, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != standard)
            std::abort();
    }
    ::closefrom(3);
    ::clearenv();
    ::umask(S_IWGRP | S_IWOTH);
    // A window that is closed in the middle of a batch closes our standard error; the batch goes on.
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

/// What the system's password prompt starts: does what the application's commands say, read from standard input, and
/// nothing else. It gives no rights by itself and links no library but the system's, as root runs it.
int main(int argc, char** argv)
{
    if (argc != 1) {
        std::fprintf(stderr, "Usage: %s <command\n", argc > 0 ? argv[0] : "orvanlite-root-runner");
        return EX_USAGE;
    }
    const Surroundings surroundings = surroundingsOfCaller();
    leaveInheritance();
    try {
        return run(readAll(Descriptor(STDIN_FILENO)), surroundings);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s: %s\n", argv[0], failure.reason.c_str());
        return EX_IOERR;
    }
}
