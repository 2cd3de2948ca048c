#include "platform/freedesktop/root-runner/Actions.h"
#include "platform/freedesktop/root-runner/CallingUser.h"

#include <sysexits.h>
#include <unistd.h>

#include <cstdio>

using namespace orvanlite::root_runner;

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
    // The line that tells the application that the password has been accepted. It may no longer listen.
    [[maybe_unused]] const ssize_t reported = ::write(STDOUT_FILENO, "\n", 1);
    try {
        return run(readAll(Descriptor(STDIN_FILENO)), surroundings);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s: %s\n", argv[0], failure.reason.c_str());
        return EX_IOERR;
    }
}
