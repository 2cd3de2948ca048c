#include "Fuzz.h"

#include "model/Json.h"
#include "profiles/PluginProfile.h"
#include "records/ActivityLogEntry.h"

using namespace orvanlite;

/// The activity log and the list of new plugins: what can be read can be written, and reads the same again.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto log = decodeActivityLog(bytesOf(data, size));
    require(decodeActivityLog(encodeActivityLog(log)) == log);
    for (const ActivityLogEntry& entry : log)
        require(!entry.timeAgo(Date{}).isEmpty());
    try {
        const QSet<QString> keys = decodePluginKeys(bytesOf(data, size));
        require(decodePluginKeys(encodePluginKeys(keys)) == keys);
    } catch (const JsonError&) {
    }
    return 0;
}
