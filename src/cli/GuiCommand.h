#pragma once

#include "cli/CliCommand.h"

namespace orvanlite {

/// Opens the window; returns when the application has ended.
using StartGui = std::function<int()>;

/// Says that the window is coming, then starts it.
class GuiCommand final {
public:
    GuiCommand(StartGui start, PrintLine print)
        : m_start(std::move(start))
        , m_print(std::move(print))
    {}

    /// Returns the application's exit status; what the start throws passes through.
    [[nodiscard]] int run() const;

private:
    StartGui m_start;
    PrintLine m_print;
};

} // namespace orvanlite
