#pragma once

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite {

/// Runs the application until its window is closed; returns the exit status. If it is already running, its
/// window is brought to the front instead; throws std::runtime_error if that fails.
int runGui(int& argc, char** argv, const platform::SystemLayout& layout);

} // namespace orvanlite
