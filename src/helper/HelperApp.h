#pragma once

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite {

/// Runs the menu-bar agent until it quits, and returns its exit status. Returns at once if an agent of the
/// same bundle is already running.
int runHelper(int& argc, char** argv, const platform::SystemLayout& layout);

} // namespace orvanlite
