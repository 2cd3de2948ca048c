#pragma once

#include <QStringList>

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace orvanlite {

/// The commands and options of the executable, declared once for parsing, help, usage and suggestions.
class CommandTree final {
public:
    CommandTree();
    CommandTree(const CommandTree&) = delete;
    CommandTree& operator=(const CommandTree&) = delete;
    ~CommandTree();

    [[nodiscard]] const CLI::App& root() const { return *m_root; }
    [[nodiscard]] const CLI::App& cliCommand() const { return *m_cli; }
    [[nodiscard]] const CLI::App& helpCommand() const { return *m_help; }
    /// The subcommand with this name, or null.
    [[nodiscard]] const CLI::App* subcommand(const QString& name) const;

    [[nodiscard]] QString version() const;
    /// The whole help page, without the final line break.
    [[nodiscard]] QString help(const CLI::App& command) const;
    /// The usage line and a reference to the help.
    [[nodiscard]] QString usage(const CLI::App& command) const;

    /// Parses the arguments. Errors do not throw; they are available through the functions below.
    void parse(const QStringList& arguments);

    /// The command named in the arguments, otherwise the root.
    [[nodiscard]] const CLI::App& chosen() const;
    [[nodiscard]] static bool isGiven(const CLI::App& command, const char* option);
    /// The option's last value; nothing when it was not given.
    [[nodiscard]] static std::optional<QString> value(const CLI::App& command, const char* option);
    /// Arguments that belong to no option of the command, in order.
    [[nodiscard]] static QStringList leftovers(const CLI::App& command);
    /// The first option with a missing value, or empty.
    [[nodiscard]] static QString optionWithoutValue(const CLI::App& command);
    /// The word after "help", or empty.
    [[nodiscard]] QString helpTopic() const;

private:
    [[nodiscard]] QString usageLine(const CLI::App& command) const;
    /// The argument as passed to the parser library.
    [[nodiscard]] std::string guarded(std::string text) const;

    std::unique_ptr<CLI::App> m_root;
    CLI::App* m_cli = nullptr;
    CLI::App* m_gui = nullptr;
    CLI::App* m_help = nullptr;
};

/// The command's option closest to a misspelled one, or empty.
[[nodiscard]] QString nearestOption(const CLI::App& command, const QString& misspelled);

} // namespace orvanlite
