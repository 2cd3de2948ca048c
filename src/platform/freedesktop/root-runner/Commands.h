#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvanlite::root_runner {

/// `mv '{source}' '{destination}'`, preceded by `mkdir -p '{parent of destination}' && ` if it creates the
/// folder.
struct Move {
    std::string source;
    std::string destination;
    bool makesFolder = false;
    bool operator==(const Move&) const = default;
};

/// One Move, optionally followed by a flush of the Audio Unit cache, with which the status is always 0.
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

/// The content of a batch script: moves, all with makesFolder, each followed by a line that writes the number
/// of moves so far to the counter.
struct Batch {
    std::vector<Move> moves;
    std::string counter;
    bool operator==(const Batch&) const = default;
};

/// Both accept exactly what the application writes, character by character, and no other shell syntax. Words
/// are single-quoted, with apostrophes as `'"'"'`, and have no NUL.
/// Errors: empty for any other text.
[[nodiscard]] std::optional<Command> parseCommand(std::string_view text);
[[nodiscard]] std::optional<Batch> parseBatch(std::string_view text);

} // namespace orvanlite::root_runner
