#include "Fuzz.h"

#include "uad/UADPluginMatcher.h"
#include "uad/UADProfile.h"

#include <algorithm>
#include <functional>

using namespace orvanlite;

/// A line per file name up to an empty one, then a profile. Few files: their index is built for each input.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t kFiles = 6;
    const QString text = platform::fromUtf8(bytesOf(data, size));
    AudioPlugins files;
    qsizetype begin = 0;
    for (qsizetype end = 0; files.size() < kFiles; begin = end + 1) {
        end = text.indexOf(u'\n', begin);
        if (end <= begin)
            break;
        files.emplace_back().name = text.sliced(begin, end - begin);
    }
    const UADPluginMatcher matcher(files);
    for (const UADPluginAuth& each : parsePluginAuthorizations(QStringView(text).sliced(begin))) {
        require(each.status.daysLeft >= 0 && !each.status.displayString().isEmpty());
        const std::vector<std::size_t> rows = matcher.matches(each.name);
        require(std::adjacent_find(rows.begin(), rows.end(), std::greater_equal<>()) == rows.end());
        require(rows.empty() || rows.back() < files.size());
    }
    return 0;
}
