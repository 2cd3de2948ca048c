#include "platform/freedesktop/root-runner/Actions.h"

#include "platform/freedesktop/root-runner/CallingUser.h"
#include "platform/freedesktop/root-runner/Trees.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace orvanlite::root_runner {

namespace {

constexpr int kFailed = 1;
constexpr int kRedirectFailed = 2; // Source: dash(1)

struct Refusal {
    std::string reason;
};

std::string quoted(const std::string& text) { return '\'' + text + '\''; }

int report(const std::string& what, const Failure& failure)
{
    std::fprintf(stderr, "%s: %s\n", what.c_str(), failure.reason.c_str());
    return kFailed;
}

class Runner {
public:
    explicit Runner(const Surroundings& surroundings)
        : m_surroundings(surroundings)
        , m_paths(surroundings)
    {}

    int operator()(const Removal& removal) const
    {
        for (const std::string& path : removal.paths)
            require(path);
        for (const std::string& path : removal.paths) {
            if (const int status = remove(path))
                return status;
        }
        return 0;
    }

    int operator()(const SingleMove& single) const
    {
        require(single.move);
        const int status = move(single.move);
        if (!single.flushesCache)
            return status;
        if (status == 0)
            flushAudioUnitCache();
        return 0;
    }

    int operator()(const ScriptCall& call) const
    {
        const auto text = readScript(call.script);
        const auto batch = parseBatch(text);
        if (!batch)
            throw Refusal{quoted(call.script) + " is not a script of Orvanlite"};
        for (const Move& each : batch->moves)
            require(each);
        int status = 0;
        for (std::size_t i = 0; i < batch->moves.size(); ++i) {
            move(batch->moves[i]);
            status = count(batch->counter, i + 1);
        }
        return status;
    }

private:
    void require(const std::string& path) const
    {
        if (!m_paths.holds(path))
            throw Refusal{quoted(path) + " is not in a plugin folder"};
    }
    void require(const Move& each) const
    {
        require(each.source);
        require(each.destination);
    }

    int remove(const std::string& path) const
    {
        try {
            const Entry entry = m_paths.open(path);
            removeTree(entry.folder, entry.name);
        } catch (const Failure& failure) {
            if (failure.number != ENOENT && failure.number != ENOTDIR) // what is not there is removed
                return report("rm: cannot remove " + quoted(path), failure);
        }
        return 0;
    }

    int move(const Move& each) const
    {
        try {
            if (each.makesFolder)
                m_paths.makeParents(each.destination);
        } catch (const Failure& failure) {
            const std::string folder = each.destination.substr(0, each.destination.rfind('/'));
            return report("mkdir: cannot create directory " + quoted(folder), failure);
        }
        try {
            const Entry source = m_paths.open(each.source);
            Entry destination = m_paths.open(each.destination);
            moveLikeMv(source, destination);
        } catch (const Failure& failure) {
            return report("mv: cannot move " + quoted(each.source) + " to " + quoted(each.destination),
                          failure);
        }
        return 0;
    }

    static void moveLikeMv(const Entry& source, Entry& destination)
    {
        struct stat moved {};
        struct stat occupant {};
        if (!statusOf(source.folder, source.name, moved))
            fail(ENOENT);
        if (statusOf(destination.folder, destination.name, occupant)) {
            struct stat target {};
            const bool leadsAway =
                S_ISLNK(occupant.st_mode) &&
                ::fstatat(destination.folder.number(), destination.name.c_str(), &target, 0) == 0 &&
                S_ISDIR(target.st_mode);
            // Into a folder, not in its place. Opening one through a link fails.
            if (leadsAway || S_ISDIR(occupant.st_mode))
                destination = {openFolder(destination.folder, destination.name), source.name};
        }
        if (statusOf(destination.folder, destination.name, occupant) && occupant.st_dev == moved.st_dev &&
            occupant.st_ino == moved.st_ino)
            throw Failure{EEXIST, "They are the same file"};
        moveTree(source, destination);
    }

    /// With the rights of the calling user, as it is in a folder of theirs.
    int count(const std::string& file, std::size_t number) const
    {
        const AsCallingUser user(m_surroundings);
        try {
            const std::string text = std::to_string(number);
            const Descriptor counter(::open(
                file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666));
            checked(static_cast<int>(::write(counter.number(), text.data(), text.size())));
        } catch (const Failure& failure) {
            report("cannot write " + quoted(file), failure);
            return kRedirectFailed;
        }
        return 0;
    }

    [[nodiscard]] std::string readScript(const std::string& file) const
    {
        const AsCallingUser user(m_surroundings);
        try {
            const Descriptor script(::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
            struct stat status {};
            checked(::fstat(script.number(), &status));
            const bool isTheirs = S_ISREG(status.st_mode) && status.st_uid == m_surroundings.user &&
                                  (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
            if (!isTheirs)
                throw Failure{EPERM, "Not a file that only its user can change"};
            return readAll(script);
        } catch (const Failure& failure) {
            throw Refusal{quoted(file) + ": " + failure.reason};
        }
    }

    void flushAudioUnitCache() const
    {
        try {
            const std::string folder = m_surroundings.rootHome + "/Library/Caches/AudioUnitCache";
            removeVisibleEntries(Descriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)));
        } catch (const Failure& failure) {
            if (failure.number != ENOENT)
                return;
        }
        try {
            Descriptor folder(::open((m_surroundings.root + '/').c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
            for (const char* name : {"Library", "Caches"})
                folder = openFolder(folder, name);
            removeTree(folder, "com.apple.audiounits.cache");
        } catch (const Failure& failure) {
            if (failure.number != ENOENT)
                return;
        }
        killRegistrar();
    }

    void killRegistrar() const
    {
        const std::string program = m_surroundings.root + "/usr/bin/killall";
        char name[] = "killall";
        char option[] = "-9";
        char registrar[] = "AudioComponentRegistrar";
        char* arguments[] = {name, option, registrar, nullptr};
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        pid_t child = 0;
        if (::posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ) == 0)
            ::waitpid(child, nullptr, 0);
        ::posix_spawn_file_actions_destroy(&actions);
    }

    const Surroundings& m_surroundings;
    PluginPaths m_paths;
};

} // namespace

int run(std::string_view input, const Surroundings& surroundings)
{
    try {
        if (input.empty() || input.find(kEndOfInput) != input.size() - 1)
            throw Refusal{"the command is incomplete"};
        const auto command = parseCommand(input.substr(0, input.size() - 1));
        if (!command)
            throw Refusal{"this is not a command of Orvanlite"};
        return std::visit(Runner(surroundings), *command);
    } catch (const Refusal& refusal) {
        std::fprintf(stderr, "orvanlite-root-runner: Refused, %s\n", refusal.reason.c_str());
        return kRefused;
    }
}

} // namespace orvanlite::root_runner
