#pragma once

#include "platform/freedesktop/root-runner/Commands.h"
#include "platform/freedesktop/root-runner/PluginPaths.h"

#include <string_view>

namespace orvanlite::root_runner {

/// Exit status for whatever is no command of the application, or names a path outside of the plugin folders.
/// Source: sysexits.h, EX_DATAERR.
inline constexpr int kRefused = 65;

/// What ends a complete input; no command has one.
inline constexpr char kEndOfInput = '\0';

/// Does what /bin/sh would do with the command, and returns its exit status, but follows no link on the way to a
/// plugin, and refuses other commands and other paths before it does anything.
///
/// Shape:   `input` is the command and kEndOfInput, so that a command that was cut short is none.
/// Effects: besides the files, one line on standard error for each failure.
[[nodiscard]] int run(std::string_view input, const Surroundings& surroundings);

} // namespace orvanlite::root_runner
