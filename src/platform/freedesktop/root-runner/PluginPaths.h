#pragma once

#include "platform/freedesktop/root-runner/Descriptor.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace orvanlite::root_runner {

/// The calling user and the location of the system's folders.
struct Surroundings {
    std::string root;     ///< empty in production; the stand-in for "/" in tests
    std::string home;     ///< of the calling user; empty for none
    std::string rootHome; ///< meaning of "~" in commands
    uid_t user = 0;
    gid_t group = 0;
};

/// A file or folder as a name in an open folder, so that nothing can change between a check and the action.
struct Entry {
    Descriptor folder;
    std::string name;
};

/// The folders that commands may change: plugin folders of the system and of the calling user.
class PluginPaths {
public:
    explicit PluginPaths(const Surroundings& surroundings);

    /// Whether the path is inside a format or version folder, and not itself such a folder or a folder of
    /// disabled plugins. Decided by the text alone; empty, `.` and `..` components are rejected.
    [[nodiscard]] bool holds(const std::string& path) const;

    /// Opens the parent of a path that holds() accepts, component by component, without following any link.
    /// Errors: Failure, with ELOOP for a link.
    [[nodiscard]] Entry open(const std::string& path) const;

    /// Creates the missing parents of such a path with mode 0755. Errors: as above.
    void makeParents(const std::string& path) const;

private:
    struct Base {
        std::string start; ///< opened directly: everything above belongs to root
        uid_t owner;
        std::vector<std::string> components; ///< from `start` to the folder of all formats
    };
    struct Location {
        const Base* base = nullptr; ///< null for no location
        std::vector<std::string> components;
    };
    [[nodiscard]] Location locate(const std::string& path) const;
    [[nodiscard]] Entry walk(const std::string& path, bool creates) const;

    std::vector<Base> m_bases;
};

} // namespace orvanlite::root_runner
