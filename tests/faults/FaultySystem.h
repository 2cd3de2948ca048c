#pragma once

#include <functional>
#include <string>

namespace orvanlite::test {

/// One fault of the system calls that read or change the files below a folder, in this process. Those of the
/// libraries are included.
struct Fault {
    std::string folder;
    int atCall = 0; ///< counted from 1; 0 for no fault
    int error = 0;  ///< errno, for this call and those after it; 0 kills the process before the call
    /// A write stores half of its bytes, only the next call fails, and all others succeed.
    bool isPartial = false;
    bool isRead = false; ///< counts reads instead of changes
};

enum class End { finished, killed, failed };

/// Runs the function in a child process with the fault; its tests fail there. The child must not need threads
/// of this process. `isReached`: whether the faulty call took place.
End runWith(const Fault& fault, const std::function<void()>& work, bool* isReached = nullptr);

/// Calls with the numbers 1, 2, ... as long as the function returns true.
template <typename Function>
int forEachCall(Function&& function)
{
    int call = 1;
    while (function(call))
        ++call;
    return call - 1;
}

} // namespace orvanlite::test
