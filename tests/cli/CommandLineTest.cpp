#include "cli/CommandLine.h"

#include "platform/freedesktop/FreedesktopFileManager.h"
#include "support/TempRoot.h"

#include <QProcess>

#include <stdexcept>

namespace orvanlite::test {

namespace {

struct Outcome {
    int status = 0;
    QStringList output;
    QString errors;
    int starts = 0;
    bool operator==(const Outcome&) const = default;
};

class CommandLineTest : public testing::Test {
protected:
    Outcome run(const QString& line)
    {
        return run(line.split(u' ', Qt::SkipEmptyParts), [] {});
    }
    Outcome run(const QStringList& arguments, const StartGui& start)
    {
        Outcome outcome;
        const auto startCounted = [&outcome, &start] {
            ++outcome.starts;
            start();
        };
        outcome.status =
            runCommandLine(arguments, {m_files, m_layout, startCounted,
                                       [&](const QString& text) { outcome.output.append(text); },
                                       [&](const QString& text) { outcome.errors += text + u'\n'; }});
        return outcome;
    }

    TempRoot m_root;
    platform::FreedesktopFileManager m_files;
    platform::SystemLayout m_layout = m_root.layout();
};

const QString kBanner = u"🎛️ Plugin Manager - Audio Plugin Management Tool\n"
                        "==================================================\n"_s;
const QString kPlaceholder =
    u"⚠️ Plugin management functionality will be implemented in the GUI version\n"
    "💡 Run 'PluginManager GUI' to launch the graphical interface"_s;

} // namespace

TEST_F(CommandLineTest, TheTextToolExplainsItself)
{
    const QString noName =
        u"❌ Plugin name required for enable/disable operations\nUse: --name <plugin-name>"_s;
    const QString unknown = u"\nAvailable actions: scan, list, enable, disable"_s;
    const std::pair<QStringList, QString> rows[] = {
        {{},
         u"Use --action <scan|list|enable|disable> to perform operations\nUse --help for more information\n\n"
         "💡 To launch the GUI interface, run:\n   PluginManager GUI"_s},
        {{u"--name"_s, u"X"_s, u"--action"_s, u"enable"_s}, u"Enabling plugin: X\n"_s + kPlaceholder},
        {{u"--action=DISABLE"_s, u"--name"_s, u"X"_s, u"--format"_s, u"Y"_s},
         u"Disabling plugin: X\nFormat filter: Y\n"_s + kPlaceholder},
        {{u"--action"_s, u"enable"_s}, noName},
        {{u"--action"_s, u""_s}, u"❌ Unknown action: "_s + unknown},
        {{u"--action=-x=y"_s}, u"❌ Unknown action: -x=y"_s + unknown},
        // The last value of a repeated option counts; a value may look like a command.
        {{u"--action=enable"_s, u"--name=A"_s, u"--name"_s, u"help"_s},
         u"Enabling plugin: help\n"_s + kPlaceholder},
        {{u"--action=enable"_s, u"--name"_s, u"[Ö|'x'] {}"_s},
         u"Enabling plugin: [Ö|'x'] {}\n"_s + kPlaceholder},
        {{u"--action=enable"_s, u"--name"_s, u"-"_s}, u"Enabling plugin: -\n"_s + kPlaceholder},
        {{u"--action=enable"_s, u"--name="_s}, u"Enabling plugin: \n"_s + kPlaceholder},
        {{u"--action=enable"_s, u"--name"_s, u"X"_s, u"--"_s}, u"Enabling plugin: X\n"_s + kPlaceholder},
    };
    for (const auto& [options, output] : rows) {
        SCOPED_TRACE(options.join(u' ').toStdString());
        Outcome outcome = run(QStringList{u"cli-command"_s} + options, [] {});
        outcome.output = {outcome.output.join(u'\n')};
        EXPECT_EQ(outcome, (Outcome{0, {kBanner + output}, {}, 0}));
    }
}

TEST_F(CommandLineTest, ScanCountsTheEntriesOfEachFolder)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/Components/One.component");
    m_root.addFile(u"/Library/Audio/Plug-Ins/Components/notes.txt");
    m_root.addFile(u"/Library/Audio/Plug-Ins/Components/.hidden", "notes.txt\n");
    m_root.addFolder(u"/Library/Audio/Plug-Ins/VST3");
    m_root.addFile(u"/Library/Audio/Plug-Ins/VST", "not a folder");
    m_root.addBundle(u"/Library/Application Support/Avid/Audio/Plug-Ins/Maker/A.aaxplugin");
    m_root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/B.clap");
    const QString counts = uR"(🔍 Scanning for audio plugins...
📁 /Library/Audio/Plug-Ins/Components: 3 plugins
📁 /Library/Audio/Plug-Ins/VST3: 0 plugins
❌ Error scanning /Library/Audio/Plug-Ins/VST: Not a directory: /Library/Audio/Plug-Ins/VST
📁 /Library/Application Support/Avid/Audio/Plug-Ins: 1 plugins
📁 /Library/Audio/Plug-Ins/CLAP: Directory not found
📁 /Users/tester/Library/Audio/Plug-Ins/Components: Directory not found
📁 /Users/tester/Library/Audio/Plug-Ins/VST3: Directory not found
📁 /Users/tester/Library/Audio/Plug-Ins/VST: Directory not found
📁 /Users/tester/Library/Application Support/Avid/Audio/Plug-Ins: Directory not found
📁 /Users/tester/Library/Audio/Plug-Ins/CLAP: 1 plugins

✅ Scan complete. Found 5 total plugins.)"_s;
    for (const auto& [action, heading] :
         {std::pair(u"SCAN"_s, QString()), {u"list"_s, u"📋 Listing audio plugins...\n"_s}}) {
        const Outcome outcome = run(u"cli-command --action "_s + action);
        EXPECT_EQ(outcome.output.join(u'\n').remove(m_root.path()), kBanner + heading + counts);
        EXPECT_EQ(outcome.status, 0);
    }
    m_layout.home = u"/"_s;
    const QStringList lines = run(u"cli-command --action scan"_s).output;
    EXPECT_EQ(lines.filter(m_root.path()).size(), 10) << "ten folders, the system's twice";
    EXPECT_EQ(lines.last(), u"\n✅ Scan complete. Found 8 total plugins."_s);
    EXPECT_FALSE(m_root.exists(u"/Library/Audio/Plug-Ins/Disabled"));
    EXPECT_TRUE(m_root.names(u"/Users/tester/.local").isEmpty());
}

TEST_F(CommandLineTest, RejectsBadUsage)
{
    const auto unexpected = [](const std::string& text) { return "Unexpected argument '" + text + '\''; };
    const auto unknown = [](const std::string& text, const std::string& meant = {}) {
        return "Unknown option '" + text + '\'' + (meant.empty() ? "" : ". Did you mean '" + meant + "'?");
    };
    const auto missing = [](const std::string& text) { return "Missing value for '" + text + '\''; };
    const std::pair<const char*, std::string> rows[] = {
        {"foo", unexpected("foo")},
        {"-", unexpected("-")},
        {"--action scan", unknown("--action")},
        {"--versoin", unknown("--versoin", "--version")},
        {"-5", unknown("-5")},
        {"--VERSION", unknown("--VERSION", "--version")},
        {"--help=", unknown("--help=", "--help")},
        {"cli-command -hx", unknown("-hx")},
        {"-- cli-command", unexpected("cli-command")},
        {"gui-command now", unexpected("now")},
        {"cli-command gui-command", unexpected("gui-command")},
        {"gui-command --name X", unknown("--name")},
        {"help cli-command me", unexpected("me")},
        {"cli-command -- --version", unexpected("--version")},
        {"cli-command --version", unknown("--version")},
        {"cli-command --nmae=X", unknown("--nmae", "--name")},
        {"cli-command -action scan", unknown("-action", "--action")},
        {"cli-command --action", missing("--action")},
        {"cli-command --action --name X", missing("--action")},
        {"cli-command --name -5", missing("--name")},
        {"cli-command --format -- VST3", missing("--format")},
    };
    for (const auto& [line, message] : rows) {
        SCOPED_TRACE(line);
        const Outcome outcome = run(QString::fromLatin1(line));
        EXPECT_EQ(outcome, (Outcome{64, {}, outcome.errors, 0}));
        EXPECT_EQ(outcome.errors.section(u'\n', 0, 0).toStdString(), "Error: " + message);
        // The usage of the command, if there is one.
        const QString first = QString::fromLatin1(line).section(u' ', 0, 0);
        const bool isCommand = first.endsWith(u"-command"_s) || first == u"help"_s;
        EXPECT_TRUE(
            outcome.errors.contains(u"\nUsage: plugin-manager "_s + (isCommand ? first : u"[options]"_s)));
    }
}

TEST_F(CommandLineTest, PrintsHelpAndVersion)
{
    const QStringList root{u"Audio Plugin Management Tool"_s,
                           u"A tool to manage audio plugins (AU, VST2, VST3, AAX, CLAP) on macOS"_s,
                           u"Show the version."_s,
                           u"Show help information."_s,
                           u"cli-command            Command-line interface for Orvanlite"_s,
                           u"gui-command (default)  Launch the graphical interface"_s,
                           u"help                   Show subcommand help information."_s};
    const QStringList cli{u"Command-line interface for Orvanlite"_s,
                          u"Action to perform (scan|list|enable|disable)"_s, u"Plugin format to filter by"_s,
                          u"Plugin name to search for"_s, u"Show help information."_s};
    const std::pair<const char*, QStringList> rows[] = {
        {"--help", root},
        {"help", root},
        {"--version --bogus -h", root},
        {"cli-command -h", cli},
        {"cli-command --action scan --bogus --help", cli},
        {"help cli-command", cli},
        {"--help cli-command", cli},
    };
    for (const auto& [line, parts] : rows) {
        SCOPED_TRACE(line);
        const Outcome outcome = run(QString::fromLatin1(line));
        EXPECT_EQ(outcome, (Outcome{0, outcome.output, {}, 0}));
        for (const QString& part : parts)
            EXPECT_TRUE(outcome.output.join(u'\n').contains(part)) << part.toStdString();
    }
    EXPECT_EQ(run(u"--version cli-command --action"_s), (Outcome{0, {u"2.4.0"_s}, {}, 0}));
}

TEST_F(CommandLineTest, StartsTheWindowAndReportsItsFailure)
{
    const QStringList launching{u"🚀 Launching Orvanlite GUI..."_s};
    for (const QString& line : {QString(), u"gui-command"_s, u"--"_s})
        EXPECT_EQ(run(line), (Outcome{0, launching, {}, 1})) << line.toStdString();
    const Outcome failed = run(QStringList(), [] { throw std::runtime_error("no display – gone"); });
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(failed.errors.startsWith(u"Error: no display – gone\n"_s));
}

/// The executable itself: which stream a text is written to, its encoding, and the exit status. Only
/// arguments that do not read the plugin folders of the machine.
TEST_F(CommandLineTest, TheExecutableUsesStreamsAndExitStatus)
{
    const QString unknown =
        kBanner + u"❌ Unknown action: \uFEFFÄndern\nAvailable actions: scan, list, enable, disable\n"_s;
    const std::tuple<QStringList, int, QString, QByteArray> rows[] = {
        {{u"cli-command"_s, u"--action"_s, u"\uFEFFÄndern"_s}, 0, unknown, ""},
        {{u"fooo"_s}, 64, {}, "Error: Unexpected argument 'fooo'\nUsage: "},
    };
    for (const auto& [arguments, status, output, errorStart] : rows) {
        SCOPED_TRACE(arguments.join(u' ').toStdString());
        QProcess process;
        // An application object of Qt's GUI would end the process, as there is no such display.
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, m_root.path());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"no-such-platform"_s);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(ORV_PLUGIN_MANAGER), arguments);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), status);
        EXPECT_EQ(process.readAllStandardOutput(), output.toUtf8());
        EXPECT_EQ(process.readAllStandardError().left(errorStart.isEmpty() ? 1 : errorStart.size()),
                  errorStart);
    }
    EXPECT_EQ(m_root.names(u""), QStringList{u"Users"_s}) << "nothing was written";
}

} // namespace orvanlite::test
