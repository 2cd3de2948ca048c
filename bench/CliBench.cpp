// Compares the start and run of "plugin-manager cli-command" with a program that links the same libraries and
// does nothing. The two alternate, so that changes in the machine's load affect both.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int kWarmUps = 10;
constexpr int kDefaultRuns = 200;
constexpr double kGoal = 1.3;

/// Milliseconds from the program's start to its end. Exits this process when it fails.
double run(const std::vector<const char*>& command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const char* word : command)
        arguments.push_back(const_cast<char*>(word));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = 0;
    const bool started =
        posix_spawn(&child, command.front(), &actions, nullptr, arguments.data(), environ) == 0;
    const bool succeeded = started && waitpid(child, &status, 0) == child && status == 0;
    const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (!succeeded) {
        std::fprintf(stderr, "%s did not run\n", command.front());
        std::exit(1);
    }
    return elapsed.count();
}

double median(std::vector<double> times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

} // namespace

/// Usage: orv_cli_bench [runs]
int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : kDefaultRuns;
    const std::vector<const char*> empty{ORV_EMPTY_PROGRAM};
    const std::vector<const char*> tool{ORV_PLUGIN_MANAGER, "cli-command"};
    std::vector<double> emptyTimes;
    std::vector<double> toolTimes;
    for (int i = -kWarmUps; i < runs; ++i) {
        const double emptyTime = run(empty);
        const double toolTime = run(tool);
        if (i >= 0) {
            emptyTimes.push_back(emptyTime);
            toolTimes.push_back(toolTime);
        }
    }
    const double floor = median(emptyTimes);
    const double time = median(toolTimes);
    std::printf("empty program, same libraries  %7.2f ms\n", floor);
    std::printf("plugin-manager cli-command     %7.2f ms\n", time);
    std::printf("ratio                          %7.2f    (goal: at most %.1f, median of %d runs)\n",
                time / floor, kGoal, runs);
    return 0;
}
