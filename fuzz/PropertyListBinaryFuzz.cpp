#include "Fuzz.h"

#include "platform/PropertyList.h"

#include <array>

using namespace orvanlite::platform;
using namespace Qt::StringLiterals;

/// The order of the requested strings does not matter.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr PropertyListField kName{"CFBundleName"_L1};
    constexpr PropertyListField kComponent{"AudioComponents"_L1, "name"_L1};
    const auto both = readBinaryPropertyList(bytesOf(data, size), std::array{kName, kComponent});
    const auto reversed = readBinaryPropertyList(bytesOf(data, size), std::array{kComponent, kName});
    require(both.has_value() == reversed.has_value());
    require(!both || (both->at(0) == reversed->at(1) && both->at(1) == reversed->at(0)));
    return 0;
}
