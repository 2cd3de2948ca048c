#include "platform/freedesktop/root-runner/Actions.h"
#include "platform/freedesktop/root-runner/CallingUser.h"

#include <sysexits.h>
#include <unistd.h>

#include <cstdio>

using namespace orvanlite::root_runner;

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
