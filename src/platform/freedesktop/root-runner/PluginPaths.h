#pragma once

#include "platform/freedesktop/root-runner/Descriptor.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace orvanlite::root_runner {

/// Who calls, and where the system's folders are.
struct Surroundings {
    std::string root;     ///< empty; in tests the folder that stands for "/"
    std::string home;     ///< of the calling user; empty for none
    std::string rootHome; ///< "~" for the commands
    uid_t user = 0;
    gid_t group = 0;
};

/// A file or folder as a name in an open folder, so that nothing can come between a check and the action.
struct Entry {
    Descriptor folder;
    std::string name;
};

/// The folders in which the commands may work: those that hold plugins, of the system and of the calling user.
class PluginPaths {
public:
    explicit PluginPaths(const Surroundings& surroundings);

    /// Whether the path names something inside one of their folders for formats or versions, and neither such a folder
    /// itself nor a folder of disabled plugins. By the text alone, which has no empty, `.` or `..` component.
    [[nodiscard]] bool holds(const std::string& path) const;

    /// Opens the parent of a path that holds() takes, component by component, without following any link.
    /// Errors: Failure; ELOOP for a link.
    [[nodiscard]] Entry open(const std::string& path) const;

    /// Creates the missing parents of such a path with mode 0755. Errors: as above.
    void makeParents(const std::string& path) const;

private:
    struct Base {
        std::string start; ///< opened as it is: what is above is root's
        uid_t owner;
        std::vector<std::string> components; ///< from there to the folder of all formats
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
