#include "cli/CommandTree.h"

#include "platform/Utf8.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <numeric>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Arguments never contain a NUL, so it marks texts that the parser library would otherwise misinterpret.
/// taken() removes it again.
constexpr char kOurs = '\0';
const std::string& missingValue()
{
    static const std::string text("\0missing", 8);
    return text;
}

QString taken(std::string text)
{
    std::erase(text, kOurs);
    return platform::fromUtf8(text);
}

/// The option was last, or was followed by an argument with a leading dash, which is not a value.
bool isMissing(const std::string& value)
{
    return value == missingValue() || (value.size() > 1 && value[0] == kOurs && value[1] == '-');
}

void addFlag(CLI::App& command, const std::string& names, const std::string& help)
{
    command.add_flag(names, help);
}

void addValueOption(CLI::App& command, const std::string& name, const std::string& help)
{
    // Zero values are allowed so that we can report a missing one; the value is named after the option.
    command.add_option(name, CLI::callback_t(), help)
        ->expected(0, 1)
        ->default_str(missingValue())
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
        ->type_name("<" + name.substr(2) + ">");
}

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

std::vector<const CLI::Option*> namedOptions(const CLI::App& command)
{
    return command.get_options([](const CLI::Option* option) { return !option->get_lnames().empty(); });
}

/// Whether the text is an option of the command in its valid form. Flags take no value and cannot be
/// combined.
bool isOption(const CLI::App& command, const std::string& text)
{
    const auto options = namedOptions(command);
    return std::any_of(options.begin(), options.end(), [&text](const CLI::Option* option) {
        const std::string name = "--" + option->get_lnames().front();
        if (takesValue(*option))
            return text.substr(0, text.find('=')) == name;
        return text == name || (!option->get_snames().empty() && text == '-' + option->get_snames().front());
    });
}

/// One line of a two-column list.
using HelpRow = std::pair<QString, QString>;

HelpRow optionRow(const CLI::Option& option)
{
    const auto& shortNames = option.get_snames();
    QString label =
        shortNames.empty() ? u"    "_s : u"-%1, "_s.arg(QString::fromStdString(shortNames.front()));
    label += u"--"_s + QString::fromStdString(option.get_lnames().front());
    if (takesValue(option))
        label += u' ' + QString::fromStdString(option.get_type_name());
    return {label, QString::fromStdString(option.get_description())};
}

QString section(const QString& title, const std::vector<HelpRow>& rows, qsizetype width)
{
    QString text = u"\n\n"_s + title;
    for (const auto& [label, description] : rows)
        text += u"\n  "_s + label.leftJustified(width) + u"  "_s + description;
    return text;
}

qsizetype widest(const std::vector<HelpRow>& rows)
{
    return std::accumulate(rows.begin(), rows.end(), qsizetype{0}, [](qsizetype width, const HelpRow& row) {
        return std::max(width, row.first.size());
    });
}

/// Edit distance, counting a swap of neighbouring letters as one edit.
/// Source: optimal string alignment distance.
qsizetype editDistance(QStringView from, QStringView to)
{
    const auto columns = static_cast<std::size_t>(to.size()) + 1;
    std::vector<qsizetype> beforeLast(columns);
    std::vector<qsizetype> last(columns);
    std::vector<qsizetype> current(columns);
    std::iota(last.begin(), last.end(), 0);
    for (qsizetype i = 0; i < from.size(); ++i) {
        current[0] = i + 1;
        for (qsizetype j = 0; j < to.size(); ++j) {
            const auto at = static_cast<std::size_t>(j);
            const qsizetype replaced = last[at] + (from[i] == to[j] ? 0 : 1);
            current[at + 1] = std::min({last[at + 1] + 1, current[at] + 1, replaced});
            if (i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j])
                current[at + 1] = std::min(current[at + 1], beforeLast[at - 1] + 1);
        }
        std::swap(beforeLast, last);
        std::swap(last, current);
    }
    return last.back();
}

} // namespace

CommandTree::CommandTree()
    : m_root(std::make_unique<CLI::App>("Audio Plugin Management Tool", "plugin-manager"))
{
    m_root->set_help_flag();
    m_root->allow_extras();
    m_root->require_subcommand(0, 1);
    m_cli = m_root->add_subcommand("cli-command", "Command-line interface for Orvanlite");
    addValueOption(*m_cli, "--action", "Action to perform (scan|list|enable|disable)");
    addValueOption(*m_cli, "--format", "Plugin format to filter by");
    addValueOption(*m_cli, "--name", "Plugin name to search for");
    m_gui = m_root->add_subcommand("gui-command", "Launch the graphical interface");
    m_help = m_root->add_subcommand("help", "Show subcommand help information.");
    m_help->add_option("subcommand", CLI::callback_t(), "The subcommand to explain");
    addFlag(*m_root, "--version", "Show the version.");
    for (CLI::App* command : {m_root.get(), m_cli, m_gui, m_help})
        addFlag(*command, "-h,--help", "Show help information.");
}

CommandTree::~CommandTree() = default;

const CLI::App* CommandTree::subcommand(const QString& name) const
{
    for (const CLI::App* command : {m_cli, m_gui, m_help}) {
        if (QString::fromStdString(command->get_name()) == name)
            return command;
    }
    return nullptr;
}

QString CommandTree::version() const { return QStringLiteral(ORV_VERSION); }

QString CommandTree::usageLine(const CLI::App& command) const
{
    QString line = u"Usage: "_s + QString::fromStdString(m_root->get_name());
    if (&command == m_root.get())
        return line + u" [options] [<subcommand>]"_s;
    line += u' ' + QString::fromStdString(command.get_name());
    if (&command == m_help)
        return line + u" [<subcommand>]"_s;
    for (const CLI::Option* option : namedOptions(command)) {
        if (takesValue(*option))
            line += u" ["_s + optionRow(*option).first.trimmed() + u']';
    }
    return line;
}

QString CommandTree::usage(const CLI::App& command) const
{
    QString named = QString::fromStdString(m_root->get_name());
    if (&command != m_root.get())
        named += u' ' + QString::fromStdString(command.get_name());
    return usageLine(command) + u"\nRun '"_s + named + u" --help' for more information."_s;
}

QString CommandTree::help(const CLI::App& command) const
{
    QString text = QString::fromStdString(command.get_description());
    if (&command == m_root.get())
        text += u"\n\nA tool to manage audio plugins (AU, VST2, VST3, AAX, CLAP) on macOS"_s;
    text += u"\n\n"_s + usageLine(command);

    std::vector<HelpRow> options;
    for (const CLI::Option* option : namedOptions(command))
        options.push_back(optionRow(*option));
    std::vector<HelpRow> subcommands;
    for (const CLI::App* each : command.get_subcommands(std::function<bool(const CLI::App*)>())) {
        const QString suffix = each == m_gui ? u" (default)"_s : QString();
        subcommands.emplace_back(QString::fromStdString(each->get_name()) + suffix,
                                 QString::fromStdString(each->get_description()));
    }
    const qsizetype width = std::max(widest(options), widest(subcommands));
    text += section(u"Options:"_s, options, width);
    if (!subcommands.empty()) {
        text += section(u"Subcommands:"_s, subcommands, width);
        text += u"\n\nRun 'plugin-manager help <subcommand>' for the help of a subcommand."_s;
    }
    return text;
}

std::string CommandTree::guarded(std::string text) const
{
    const bool looksLikeOption = text.size() > 1 && text.front() == '-';
    const bool isKnown = isOption(*m_root, text) || isOption(*m_cli, text); // the others only have --help
    if (text == "++" || (looksLikeOption && !isKnown)) // "++" ends a subcommand in the library
        text.insert(text.begin(), kOurs);
    else if (text.starts_with("--") && text.find('=') == text.size() - 1) // an empty value, not a missing one
        text.push_back(kOurs);
    return text;
}

void CommandTree::parse(const QStringList& arguments)
{
    std::vector<std::string> reversed; // as the library expects them
    reversed.reserve(static_cast<std::size_t>(arguments.size()));
    for (const QString& argument : arguments)
        reversed.push_back(guarded(argument.toStdString()));
    std::reverse(reversed.begin(), reversed.end());
    m_root->parse(std::move(reversed));
}

const CLI::App& CommandTree::chosen() const
{
    const auto named = m_root->get_subcommands();
    return named.empty() ? *m_root : *named.front();
}

bool CommandTree::isGiven(const CLI::App& command, const char* option)
{
    return command.get_option(option)->count() > 0;
}

std::optional<QString> CommandTree::value(const CLI::App& command, const char* option)
{
    const auto& values = command.get_option(option)->results();
    if (values.empty())
        return std::nullopt;
    return taken(values.back());
}

QStringList CommandTree::leftovers(const CLI::App& command)
{
    QStringList texts;
    for (const std::string& each : command.remaining())
        texts.append(taken(each));
    return texts;
}

QString CommandTree::optionWithoutValue(const CLI::App& command)
{
    for (const CLI::Option* option : namedOptions(command)) {
        const auto& values = option->results();
        if (std::any_of(values.begin(), values.end(), isMissing))
            return QString::fromStdString(option->get_name());
    }
    return {};
}

QString CommandTree::helpTopic() const { return value(*m_help, "subcommand").value_or(QString()); }

QString nearestOption(const CLI::App& command, const QString& misspelled)
{
    QString word = misspelled.toLower();
    while (word.startsWith(u'-'))
        word.remove(0, 1);
    QString nearest;
    // Up to a third of the letters, rounded up, may differ: less would miss swaps, more would be guessing.
    qsizetype least = (word.size() + 2) / 3 + 1;
    for (const CLI::Option* option : namedOptions(command)) {
        const QString name = QString::fromStdString(option->get_lnames().front());
        const qsizetype distance = editDistance(word, name);
        if (distance < least) {
            least = distance;
            nearest = u"--"_s + name;
        }
    }
    return nearest;
}

} // namespace orvanlite
