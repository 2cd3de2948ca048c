#pragma once

#include "cli/GuiCommand.h"

#include <QStringList>

#include <variant>

namespace orvanlite {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 64; ///< Source: EX_USAGE of sysexits.h

/// The window is wanted.
struct GuiRequest {
    bool operator==(const GuiRequest&) const = default;
};

/// Nothing is to be run: help, the version, or an error with the usage.
struct TextAnswer {
    QString output; ///< for standard output, without the last line end; may be empty
    QString error;  ///< for standard error, the same
    int status = kExitSuccess;
    bool operator==(const TextAnswer&) const = default;
};

using CommandRequest = std::variant<GuiRequest, CliArguments, TextAnswer>;

/// Reads the arguments without the program's name.
/// Shape:  help goes before everything else, then the version, then errors: what does not fit before the
///         subcommand, missing values, what does not fit behind it. Of a repeated option the last value
///         counts. A value that begins with a dash is written "--name=-value"; only the lone "-" stands for
///         itself.
[[nodiscard]] CommandRequest parseCommandLine(const QStringList& arguments);

/// What the commands work with.
struct CommandSurroundings {
    const platform::FileManager& files;
    const platform::SystemLayout& layout;
    StartGui startGui;
    PrintLine printOutput;
    PrintLine printError;
};

/// Reads the arguments, runs what they ask for and returns the exit status. Never throws: what a command
/// throws ends as an error text and kExitFailure.
[[nodiscard]] int runCommandLine(const QStringList& arguments, const CommandSurroundings& surroundings);

} // namespace orvanlite
