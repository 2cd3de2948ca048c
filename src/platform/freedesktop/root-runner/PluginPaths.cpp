#include "platform/freedesktop/root-runner/PluginPaths.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string_view>

namespace orvanlite::root_runner {

namespace {

using Components = std::vector<std::string>;

const Components kPlugIns{"Library", "Audio", "Plug-Ins"};
const Components kAvid{"Library", "Application Support", "Avid", "Audio"};
const Components kWaves{"Applications", "Waves"};
const std::string kDisabled = "Disabled";

/// Empty for a path that is not absolute, or has an empty, `.` or `..` component or a NUL: system calls stop
/// at a NUL, so `..` followed by one would be `..` to them.
std::optional<Components> split(std::string_view path)
{
    if (path.find('\0') != std::string_view::npos)
        return std::nullopt;
    Components components;
    while (!path.empty()) {
        if (path.front() != '/')
            return std::nullopt;
        path.remove_prefix(1);
        const std::string_view next = path.substr(0, path.find('/'));
        if (next.empty() || next == "." || next == "..")
            return std::nullopt;
        components.emplace_back(next);
        path.remove_prefix(next.size());
    }
    return components;
}

} // namespace

PluginPaths::PluginPaths(const Surroundings& surroundings)
    : m_bases{{surroundings.root, 0, kPlugIns}, {surroundings.root, 0, kAvid}, {surroundings.root, 0, kWaves}}
{
    std::string home = surroundings.home;
    while (home.ends_with('/'))
        home.pop_back();
    if (!home.empty() && split(home)) {
        m_bases.push_back({home, surroundings.user, kPlugIns});
        m_bases.push_back({home, surroundings.user, kAvid});
    }
}

PluginPaths::Location PluginPaths::locate(const std::string& path) const
{
    for (const Base& base : m_bases) {
        if (!path.starts_with(base.start))
            continue;
        const auto components = split(std::string_view(path).substr(base.start.size()));
        if (components && components->size() > base.components.size() &&
            std::equal(base.components.begin(), base.components.end(), components->begin()))
            return {&base, *components};
    }
    return {};
}

bool PluginPaths::holds(const std::string& path) const
{
    const Location location = locate(path);
    if (!location.base)
        return false;
    const std::size_t first = location.base->components.size();
    const std::size_t depth = location.components.size() - first;
    // The central "Disabled" has a folder per format; each Waves version folder has a "Disabled".
    const bool isInDisabled =
        location.components[first] == kDisabled || (depth > 1 && location.components[first + 1] == kDisabled);
    return depth >= (isInDisabled ? 3U : 2U);
}

Entry PluginPaths::open(const std::string& path) const { return walk(path, false); }

void PluginPaths::makeParents(const std::string& path) const { static_cast<void>(walk(path, true)); }

Entry PluginPaths::walk(const std::string& path, bool creates) const
{
    const Location location = locate(path);
    if (!location.base)
        fail(EPERM);
    const std::string& start = location.base->start;
    Descriptor folder(::open(start.empty() ? "/" : start.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    checked(::fstat(folder.number(), &status));
    if (location.base->owner != 0 && status.st_uid != location.base->owner)
        fail(EPERM); // not the home folder of this user
    for (std::size_t i = 0; i + 1 < location.components.size(); ++i) {
        const std::string& name = location.components[i];
        if (creates && ::mkdirat(folder.number(), name.c_str(), 0777) != 0 && errno != EEXIST)
            fail(errno);
        folder = openFolder(folder, name);
    }
    return {std::move(folder), location.components.back()};
}

} // namespace orvanlite::root_runner
