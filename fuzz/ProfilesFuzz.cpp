#include "Fuzz.h"

#include "model/Json.h"
#include "profiles/PluginProfile.h"

using namespace orvanlite;

/// What can be read can be written, and reads the same again: as a list and as a document.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const PluginProfiles profiles = decodeProfiles(bytesOf(data, size));
        require(decodeProfiles(encodeProfiles(profiles)) == profiles);
    } catch (const JsonError&) {
    }
    try {
        const PluginProfile profile = decodeProfile(bytesOf(data, size));
        require(decodeProfile(encodeProfileIndented(profile)) == profile);
        require(decodeProfiles(encodeProfiles({profile})) == PluginProfiles{profile});
    } catch (const JsonError&) {
    }
    return 0;
}
