#pragma once

#include "platform/freedesktop/root-runner/Commands.h"
#include "platform/freedesktop/root-runner/PluginPaths.h"

#include <string_view>

namespace orvanlite::root_runner {

/// Exit status for input that is not a command of the application or names a path outside the plugin folders.
/// Source: sysexits.h, EX_DATAERR.
inline constexpr int kRefused = 65;

/// Terminates a complete input; no command contains it.
inline constexpr char kEndOfInput = '\0';

/// Executes the command like /bin/sh and returns its exit status, but follows no links in the path of a
/// plugin and rejects other commands and paths before changing anything.
///
/// Shape:   `input` is the command and kEndOfInput, so that truncated commands are rejected.
/// Effects: besides the file changes, one line on standard error per failure.
[[nodiscard]] int run(std::string_view input, const Surroundings& surroundings);

} // namespace orvanlite::root_runner
