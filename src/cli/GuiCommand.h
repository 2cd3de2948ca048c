#pragma once

#include "cli/CliCommand.h"

namespace orvanlite {

/// Opens the window; returns when the application has ended.
using StartGui = std::function<void()>;

/// Says that the window is coming, then starts it.
class GuiCommand final {
public:
    GuiCommand(StartGui start, PrintLine print)
        : m_start(std::move(start))
        , m_print(std::move(print))
    {}

    /// Returns when the application has ended, however it did; what the start throws passes through.
    void run() const;

private:
    StartGui m_start;
    PrintLine m_print;
};

} // namespace orvanlite
