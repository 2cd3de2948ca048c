#include "cli/CommandLine.h"

#include "cli/CommandTree.h"

#include <exception>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

TextAnswer usageError(const CommandTree& tree, const CLI::App& command, const QString& message)
{
    return {{}, u"Error: "_s + message + u'\n' + tree.usage(command), kExitUsage};
}

/// The part before the equals sign of "--option=value".
QString optionOf(const QString& argument)
{
    const qsizetype equals = argument.indexOf(u'=');
    return equals > 2 ? argument.first(equals) : argument;
}

QString messageForLeftover(const CLI::App& command, const QString& argument)
{
    if (!argument.startsWith(u'-') || argument.size() == 1)
        return u"Unexpected argument '"_s + argument + u'\'';
    const QString option = optionOf(argument);
    const QString near = nearestOption(command, option);
    // The name is right, so the value is the error: quote the whole argument.
    const QString message = u"Unknown option '"_s + (near == option ? argument : option) + u'\'';
    return near.isEmpty() ? message : message + u". Did you mean '"_s + near + u"'?"_s;
}

TextAnswer helpAnswer(const CommandTree& tree, const CLI::App& command)
{
    return {tree.help(command), {}, kExitSuccess};
}

/// The answer to "help" and "help {command}".
TextAnswer helpCommandAnswer(const CommandTree& tree)
{
    const QString topic = tree.helpTopic();
    if (topic.isEmpty())
        return helpAnswer(tree, tree.root());
    if (const CLI::App* command = tree.subcommand(topic))
        return helpAnswer(tree, *command);
    return usageError(tree, tree.helpCommand(), messageForLeftover(tree.helpCommand(), topic));
}

} // namespace

CommandRequest parseCommandLine(const QStringList& arguments)
{
    CommandTree tree;
    // No command takes positional arguments, so anything after "--" is an error.
    const qsizetype terminator = arguments.indexOf(u"--"_s);
    tree.parse(arguments.first(terminator < 0 ? arguments.size() : terminator));
    const CLI::App& command = tree.chosen();
    if (tree.isGiven(tree.root(), "--help") || tree.isGiven(command, "--help"))
        return helpAnswer(tree, command);
    if (tree.isGiven(tree.root(), "--version"))
        return TextAnswer{tree.version(), {}, kExitSuccess};

    if (const QStringList strays = CommandTree::leftovers(tree.root()); !strays.isEmpty())
        return usageError(tree, tree.root(), messageForLeftover(tree.root(), strays.first()));
    if (const QString option = CommandTree::optionWithoutValue(command); !option.isEmpty())
        return usageError(tree, command, u"Missing value for '"_s + option + u'\'');
    if (const QStringList strays = CommandTree::leftovers(command); !strays.isEmpty())
        return usageError(tree, command, messageForLeftover(command, strays.first()));
    if (terminator >= 0 && terminator + 1 < arguments.size())
        return usageError(tree, command, u"Unexpected argument '"_s + arguments.at(terminator + 1) + u'\'');

    if (&command == &tree.helpCommand())
        return helpCommandAnswer(tree);
    if (&command == &tree.cliCommand()) {
        return CliArguments{CommandTree::value(command, "--action"), CommandTree::value(command, "--format"),
                            CommandTree::value(command, "--name")};
    }
    return GuiRequest{};
}

int runCommandLine(const QStringList& arguments, const CommandSurroundings& surroundings)
{
    try {
        const CommandRequest request = parseCommandLine(arguments);
        if (const auto* answer = std::get_if<TextAnswer>(&request)) {
            if (!answer->output.isEmpty())
                surroundings.printOutput(answer->output);
            if (!answer->error.isEmpty())
                surroundings.printError(answer->error);
            return answer->status;
        }
        if (const auto* options = std::get_if<CliArguments>(&request)) {
            CliCommand(surroundings.files, surroundings.layout, surroundings.printOutput).run(*options);
            return kExitSuccess;
        }
        GuiCommand(surroundings.startGui, surroundings.printOutput).run();
        return kExitSuccess;
    } catch (const std::exception& error) {
        surroundings.printError(u"Error: "_s + QString::fromUtf8(error.what()));
        return kExitFailure;
    }
}

} // namespace orvanlite
