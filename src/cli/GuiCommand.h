#pragma once

#include "cli/CliCommand.h"

namespace orvanlite {

/// Runs the GUI; returns when the application has quit.
using StartGui = std::function<void()>;

/// Prints a message, then starts the GUI.
class GuiCommand final {
public:
    GuiCommand(StartGui start, PrintLine print)
        : m_start(std::move(start))
        , m_print(std::move(print))
    {}

    /// Returns when the application has quit. Exceptions from the start propagate.
    void run() const;

private:
    StartGui m_start;
    PrintLine m_print;
};

} // namespace orvanlite
