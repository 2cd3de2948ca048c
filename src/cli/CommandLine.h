#pragma once

#include "cli/GuiCommand.h"

#include <QStringList>

#include <variant>

namespace orvanlite {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 64; ///< Source: EX_USAGE of sysexits.h

/// Open the window.
struct GuiRequest {
    bool operator==(const GuiRequest&) const = default;
};

/// Only print: help, the version, or an error with the usage.
struct TextAnswer {
    QString output; ///< for standard output, without the final line break; may be empty
    QString error;  ///< for standard error, likewise
    int status = kExitSuccess;
    bool operator==(const TextAnswer&) const = default;
};

using CommandRequest = std::variant<GuiRequest, CliArguments, TextAnswer>;

/// Parses the arguments without the program's name.
/// Shape:  help takes precedence, then the version, then errors: unknown arguments before the subcommand,
///         missing values, unknown arguments after it. The last value of a repeated option wins. A value that
///         begins with a dash is written "--name=-value"; a lone "-" is a value.
[[nodiscard]] CommandRequest parseCommandLine(const QStringList& arguments);

/// Dependencies of the commands.
struct CommandSurroundings {
    const platform::FileManager& files;
    const platform::SystemLayout& layout;
    StartGui startGui;
    PrintLine printOutput;
    PrintLine printError;
};

/// Parses the arguments, runs the command and returns the exit status. Does not throw: an exception is
/// printed as an error and gives kExitFailure.
[[nodiscard]] int runCommandLine(const QStringList& arguments, const CommandSurroundings& surroundings);

} // namespace orvanlite
