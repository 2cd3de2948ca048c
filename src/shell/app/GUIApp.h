#pragma once

namespace orvanlite {

/// Opens the application and runs it until its window is closed. Returns the exit status.
int runGui(int& argc, char** argv);

} // namespace orvanlite
