#pragma once

#include <QStringList>

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace orvanlite {

/// The commands and options of the executable, declared once: arguments are read by it, and help, usage and
/// suggestions are made from it.
class CommandTree final {
public:
    CommandTree();
    CommandTree(const CommandTree&) = delete;
    CommandTree& operator=(const CommandTree&) = delete;
    ~CommandTree();

    [[nodiscard]] const CLI::App& root() const { return *m_root; }
    [[nodiscard]] const CLI::App& cliCommand() const { return *m_cli; }
    [[nodiscard]] const CLI::App& helpCommand() const { return *m_help; }
    /// The subcommand of that name, or null.
    [[nodiscard]] const CLI::App* subcommand(const QString& name) const;

    [[nodiscard]] QString version() const;
    /// The whole help page, without the last line end.
    [[nodiscard]] QString help(const CLI::App& command) const;
    /// The usage line, and where to find more.
    [[nodiscard]] QString usage(const CLI::App& command) const;

    /// Takes the arguments in. What does not fit is kept and asked for below; nothing is thrown for it.
    void parse(const QStringList& arguments);

    /// The command that the arguments name, the root if none.
    [[nodiscard]] const CLI::App& chosen() const;
    [[nodiscard]] static bool isGiven(const CLI::App& command, const char* option);
    /// The last value of the option; nothing when it was not given.
    [[nodiscard]] static std::optional<QString> value(const CLI::App& command, const char* option);
    /// Arguments that belong to no option of the command, from left to right.
    [[nodiscard]] static QStringList leftovers(const CLI::App& command);
    /// The first option that was given without its value, or empty.
    [[nodiscard]] static QString optionWithoutValue(const CLI::App& command);
    /// The word behind "help", or empty.
    [[nodiscard]] QString helpTopic() const;

private:
    [[nodiscard]] QString usageLine(const CLI::App& command) const;
    /// The argument as the parser library is to see it.
    [[nodiscard]] std::string guarded(std::string text) const;

    std::unique_ptr<CLI::App> m_root;
    CLI::App* m_cli = nullptr;
    CLI::App* m_gui = nullptr;
    CLI::App* m_help = nullptr;
};

/// The option of the command that was probably meant by a misspelled one, or empty.
[[nodiscard]] QString nearestOption(const CLI::App& command, const QString& misspelled);

} // namespace orvanlite
