#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvanlite::root_runner {

/// `mv '{source}' '{destination}'`, behind `mkdir -p '{parent of destination}' && ` if it makes the folder.
struct Move {
    std::string source;
    std::string destination;
    bool makesFolder = false;
    bool operator==(const Move&) const = default;
};

/// One Move, optionally with the flush of the Audio Unit cache behind it, which ends with status 0 whatever happens.
struct SingleMove {
    Move move;
    bool flushesCache = false;
    bool operator==(const SingleMove&) const = default;
};

/// `rm -rf '{path}'` joined by ` && `; no path for an empty command.
struct Removal {
    std::vector<std::string> paths;
    bool operator==(const Removal&) const = default;
};

/// `chmod +x '{script}' && '{script}'`
struct ScriptCall {
    std::string script;
    bool operator==(const ScriptCall&) const = default;
};

using Command = std::variant<Removal, SingleMove, ScriptCall>;

/// The content of a script: moves, all with makesFolder, each followed by a line that writes the number of moves so far
/// to the counter.
struct Batch {
    std::vector<Move> moves;
    std::string counter;
    bool operator==(const Batch&) const = default;
};

/// Both read exactly what the application writes, space by space, and nothing else of the shell's language. Words are
/// in single quotes, an apostrophe in them as `'"'"'`, and have no NUL.
/// Errors: nothing for any other text.
[[nodiscard]] std::optional<Command> parseCommand(std::string_view text);
[[nodiscard]] std::optional<Batch> parseBatch(std::string_view text);

} // namespace orvanlite::root_runner
