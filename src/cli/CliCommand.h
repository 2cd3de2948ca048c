#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace orvanlite::platform {
class FileManager;
struct SystemLayout;
} // namespace orvanlite::platform

namespace orvanlite {

/// Prints one line; the text has no line break at its end.
using PrintLine = std::function<void(const QString& line)>;

/// The options of the command-line tool as typed; absent when not given.
struct CliArguments {
    std::optional<QString> action;
    std::optional<QString> format;
    std::optional<QString> name;
    bool operator==(const CliArguments&) const = default;
};

/// The command-line tool: counts the entries in the plugin folders and changes nothing.
class CliCommand final {
public:
    CliCommand(const platform::FileManager& files, const platform::SystemLayout& layout, PrintLine print);

    /// Errors: none. An unknown action, a missing name or an unreadable folder is reported in the output.
    void run(const CliArguments& arguments) const;

private:
    void scanPlugins() const;
    /// Prints and returns the number of entries in a folder; 0 if it is missing or unreadable.
    qsizetype countEntries(const QString& folder) const;
    void togglePlugin(const CliArguments& arguments, bool enable) const;

    const platform::FileManager& m_files;
    const platform::SystemLayout& m_layout;
    PrintLine m_print;
};

} // namespace orvanlite
