#pragma once

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite {

/// Opens the application and runs it until its window is closed. Returns the exit status. Where the application already
/// runs, its window comes to the front instead; std::runtime_error when it does not.
int runGui(int& argc, char** argv, const platform::SystemLayout& layout);

} // namespace orvanlite
