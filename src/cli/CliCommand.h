#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace orvanlite::platform {
class FileManager;
struct SystemLayout;
} // namespace orvanlite::platform

namespace orvanlite {

/// Takes one line of text, without its line end.
using PrintLine = std::function<void(const QString& line)>;

/// The options of the text tool as they were typed; absent when not given.
struct CliArguments {
    std::optional<QString> action;
    std::optional<QString> format;
    std::optional<QString> name;
    bool operator==(const CliArguments&) const = default;
};

/// The small text tool: tells how many entries lie in the plugin folders, and changes nothing.
class CliCommand final {
public:
    CliCommand(const platform::FileManager& files, const platform::SystemLayout& layout, PrintLine print);

    /// Errors: none. An unknown action, a missing name and a folder that cannot be read are told in the
    /// output.
    void run(const CliArguments& arguments) const;

private:
    void scanPlugins() const;
    /// Prints the count of a folder's entries and returns it; 0 for a folder that is missing or unreadable.
    qsizetype countEntries(const QString& folder) const;
    void togglePlugin(const CliArguments& arguments, bool enable) const;

    const platform::FileManager& m_files;
    const platform::SystemLayout& m_layout;
    PrintLine m_print;
};

} // namespace orvanlite
