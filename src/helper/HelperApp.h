#pragma once

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite {

/// Runs the menu-bar agent until it is told to end, and returns its exit status. Where an agent of the same bundle
/// runs already, it ends at once.
int runHelper(int& argc, char** argv, const platform::SystemLayout& layout);

} // namespace orvanlite
