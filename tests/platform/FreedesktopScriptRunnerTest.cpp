#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "platform/posix/ChildScriptRunner.h"
#include "support/Fakes.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QTimer>

namespace orvanlite::test {

using namespace Qt::StringLiterals;
using namespace platform;

namespace {

QString sourceOf(const QString& command)
{
    return u"do shell script \""_s + command + u"\" with administrator privileges"_s;
}

QCoro::Task<> store(ScriptRunner* runner, QString source, ScriptOutcome* into)
{
    *into = co_await runner->execute(source);
}

QString message(const ScriptOutcome& outcome)
{
    return outcome.error ? outcome.error->value(u"NSAppleScriptErrorMessage"_s) : u"(none)"_s;
}

QString number(const ScriptOutcome& outcome)
{
    return outcome.error ? outcome.error->value(u"NSAppleScriptErrorNumber"_s) : u"(none)"_s;
}

class ScriptRunnerTest : public testing::Test {
protected:
    TempRoot root;
    SystemLayout layout = root.layout();

    ScriptOutcome run(ScriptRunner& runner, const QString& command) const
    {
        ScriptOutcome outcome;
        runTask(store(&runner, sourceOf(command), &outcome));
        return outcome;
    }
    [[nodiscard]] QString pipe() const
    {
        const QString path = root.at(u"/pipe");
        ::mkfifo(path.toUtf8().constData(), 0600);
        return path;
    }
    /// A program that stands for the system's prompt.
    [[nodiscard]] QString prompt(const QByteArray& script) const
    {
        root.addFile(u"/prompt", "#!/bin/sh\n" + script);
        QFile(root.at(u"/prompt")).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return root.at(u"/prompt");
    }
};

} // namespace

TEST_F(ScriptRunnerTest, TellsWhatBecameOfTheCommand)
{
    FreedesktopScriptRunner runner(layout, Elevation::none);
    const struct {
        QString command;
        std::optional<QString> result;
        QString message, number;
    } rows[] = {
        {u"echo a; echo"_s, u"a\n"_s, u"(none)"_s, u"(none)"_s},
        {u"true"_s, u""_s, u"(none)"_s, u"(none)"_s},
        {u"echo 'ü $HOME'; echo noise >&2"_s, u"ü $HOME"_s, u"(none)"_s, u"(none)"_s},
        {u""_s, u""_s, u"(none)"_s, u"(none)"_s},
        {u"cat; echo 'it gets no part of the script'"_s, u"it gets no part of the script"_s, u"(none)"_s,
         u"(none)"_s},
        {u"nothing"_s, std::nullopt, u"/bin/sh: 1: nothing: not found"_s, u"127"_s},
        {u"echo out; echo ' why ' >&2; exit 3"_s, std::nullopt, u"why"_s, u"3"_s},
        {u"exit 1"_s, std::nullopt, u"The command exited with a non-zero status."_s, u"1"_s},
        {u"exit 126"_s, std::nullopt, u"The command exited with a non-zero status."_s, u"126"_s},
        {u"kill -9 $$"_s, std::nullopt, u"The command was stopped by a signal."_s, u"-2700"_s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command.toStdString());
        const ScriptOutcome outcome = run(runner, row.command);
        EXPECT_EQ(outcome.result, row.result);
        EXPECT_EQ(message(outcome), row.message);
        EXPECT_EQ(number(outcome), row.number);
        EXPECT_EQ(outcome.succeeded(), row.result.has_value());
    }
    EXPECT_EQ(number(run(runner, u"mv 'it'\"'\"'s' x"_s)), u"-2741"_s);
    ScriptOutcome outcome;
    runTask(store(&runner, u"beep"_s, &outcome));
    EXPECT_EQ(number(outcome), u"-1708"_s);
}

TEST_F(ScriptRunnerTest, ReadsLongOutputsOfBothChannels)
{
    FreedesktopScriptRunner runner(layout, Elevation::none);
    const ScriptOutcome outcome =
        run(runner, u"head -c 3000000 /dev/zero | tr -c e e >&2; head -c 3000000 /dev/zero | tr -c o o"_s);
    EXPECT_EQ(outcome.result.value_or(QString()).size(), 3'000'000);
}

TEST_F(ScriptRunnerTest, ASandboxHasItsOwnHomeAndTools)
{
    root.addFile(u"/tools/killall", "#!/bin/sh\necho stand-in \"$@\"\n");
    QFile(root.at(u"/tools/killall")).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    const QString wanted = layout.home + u"\nstand-in -9 AudioComponentRegistrar"_s;
    const QString command = u"echo ~; killall -9 AudioComponentRegistrar"_s;
    FreedesktopScriptRunner direct(layout, Elevation::none);
    EXPECT_EQ(run(direct, command).result, wanted);
    // A prompt that clears the environment as the system's does.
    const QString clearing = prompt("exec env -i PATH=/usr/bin:/bin HOME=/ \"$@\"\n");
    // The runner would refuse it.
    for (const QString& runner : {QString(), QStringLiteral(ORV_ROOT_RUNNER_EXECUTABLE)}) {
        layout.rootRunner = runner;
        FreedesktopScriptRunner prompted(layout, clearing);
        EXPECT_EQ(run(prompted, command).result, wanted) << runner.toStdString();
    }
}

TEST_F(ScriptRunnerTest, ReadsTheAnswersOfThePrompt)
{
    const struct {
        QByteArray prompt;
        QString command;
        std::optional<QString> result;
        QString message, number;
    } rows[] = {
        {"[ $# = 1 ] && exec \"$@\"\n", u"echo ran"_s, u"ran"_s, u"(none)"_s, u"(none)"_s},
        {"exit 126\n", u"true"_s, std::nullopt, u"User canceled."_s, u"-128"_s},
        {"exec 0<&-; exit 126\n", QString(8'000'000, u' '), std::nullopt, u"User canceled."_s, u"-128"_s},
        {"echo 'Error executing command as another user: Request dismissed' >&2; exit 126\n", u"true"_s,
         std::nullopt, u"User canceled."_s, u"-128"_s},
        {"exit 127\n", u"true"_s, std::nullopt, u"The authorization was denied."_s, u"-60005"_s},
        {"printf 'Error executing command as another user: Not authorized\\n\\nReported.\\n' >&2; exit 127\n",
         u"true"_s, std::nullopt,
         u"The authorization was denied. Error executing command as another user: Not authorized Reported."_s,
         u"-60005"_s},
        {"exec \"$@\"\n", u"echo 'sh: nothing: not found' >&2; exit 127"_s, std::nullopt,
         u"sh: nothing: not found"_s, u"127"_s},
        {"exec \"$@\"\n", u"exit 4"_s, std::nullopt, u"The command exited with a non-zero status."_s, u"4"_s},
    };
    SystemLayout production = layout;
    production.root.clear();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.prompt.constData());
        FreedesktopScriptRunner runner(production, prompt(row.prompt));
        const ScriptOutcome outcome = run(runner, row.command);
        EXPECT_EQ(outcome.result, row.result);
        EXPECT_EQ(message(outcome), row.message);
        EXPECT_EQ(number(outcome), row.number);
    }
    FreedesktopScriptRunner missing(production, root.at(u"/none"));
    const ScriptOutcome outcome = run(missing, u"true"_s);
    EXPECT_EQ(number(outcome), u"-2700"_s);
    EXPECT_FALSE(message(outcome).isEmpty());
}

TEST_F(ScriptRunnerTest, ThePromptStartsTheInstalledRunnerOrElseTheShell)
{
    const QString runner = QStringLiteral(ORV_ROOT_RUNNER_EXECUTABLE);
    SystemLayout production = layout;
    production.root.clear();
    const QString whatItGets = prompt("printf '%s|' \"$@\"; tr '\\000' '#'\n");
    for (const QString& installed : {runner, root.at(u"/none"), QString()}) {
        SCOPED_TRACE(installed.toStdString());
        production.rootRunner = installed;
        FreedesktopScriptRunner prompted(production, whatItGets);
        const QString got = run(prompted, u"a 'b'"_s).result.value_or(QString());
        const QString wanted = installed == runner ? runner + u"|a 'b'#"_s : u"/bin/sh|ulimit"_s;
        EXPECT_EQ(got.first(std::min(got.size(), wanted.size())), wanted);
    }
}

TEST_F(ScriptRunnerTest, TheInstalledRunnerRefusesWhatIsNotOurs)
{
    SystemLayout production = layout;
    production.root.clear();
    production.rootRunner = QStringLiteral(ORV_ROOT_RUNNER_EXECUTABLE);
    const QByteArray environment = "env -i PATH=/usr/bin:/bin PKEXEC_UID=" + QByteArray::number(::getuid());
    root.addFile(u"/empty.sh", "#!/bin/sh\nn=0");
    root.addFile(u"/touch.sh", "#!/bin/sh\nn=0\ntouch " + root.at(u"/canary").toUtf8());
    const QString script = u"chmod +x '%1' && '%1'"_s;
    const struct {
        QByteArray prompt;
        QString command;
        QString message, number;
    } rows[] = {
        {" \"$@\"", u""_s, u"(none)"_s, u"(none)"_s},
        {" \"$@\"", script.arg(root.at(u"/empty.sh")), u"(none)"_s, u"(none)"_s},
        {" \"$@\"", u"touch '%1'"_s.arg(root.at(u"/canary")), u"orvanlite-root-runner: Refused, this is"_s,
         u"65"_s},
        {" \"$@\"", u"rm -rf '%1'"_s.arg(root.at(u"/")), u"orvanlite-root-runner: Refused, '/"_s, u"65"_s},
        {" \"$@\"", script.arg(root.at(u"/touch.sh")), u"orvanlite-root-runner: Refused, '/"_s, u"65"_s},
        {" head -c 20 | \"$@\"", u"rm -rf '%1'"_s.arg(root.at(u"/")),
         u"orvanlite-root-runner: Refused, the"_s, u"65"_s},
        {" sh -c 'kill -9 $$'", u""_s, u"The command was stopped by a signal."_s, u"-2700"_s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command.toStdString());
        FreedesktopScriptRunner prompted(production, prompt("exec " + environment + row.prompt + '\n'));
        const ScriptOutcome outcome = run(prompted, row.command);
        EXPECT_TRUE(message(outcome).startsWith(row.message)) << message(outcome).toStdString();
        EXPECT_EQ(number(outcome), row.number);
    }
    EXPECT_FALSE(root.exists(u"/canary"));
    EXPECT_EQ(QProcess::execute(production.rootRunner, {u"true"_s}), 64) << "commands are no arguments";
}

TEST_F(ScriptRunnerTest, TakesCommandsOfAnyLength)
{
    const QString folder = root.at(u"/Library/Audio/Plug-Ins/VST3/"_s + QString(200, u'n'));
    root.addFolder(folder.sliced(root.path().size()));
    FreedesktopScriptRunner direct(layout, Elevation::none);
    FreedesktopScriptRunner prompted(layout, prompt("exec \"$@\"\n"));
    // More than one argument could hold.
    QStringList removals;
    for (int i = 0; i < 500; ++i) {
        const QString path = folder + u'/' + QString::number(i);
        ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
        removals.append(u"rm -rf '%1'"_s.arg(path));
    }
    EXPECT_GT(removals.join(u" && ").size(), 131'072);
    EXPECT_EQ(run(prompted, removals.join(u" && ")).result, u""_s);
    EXPECT_TRUE(QDir(folder).isEmpty());
    // 20,000, without as many programs: 5 MB of what the shell does itself.
    const QString check = u"[ -d '%1' ] && "_s.arg(folder);
    EXPECT_EQ(run(direct, check.repeated(20'000) + u"echo done"_s).result, u"done"_s);
    // More than the stack that a shell has by itself.
    EXPECT_EQ(run(direct, u"true && "_s.repeated(250'000) + u"echo done"_s).result, u"done"_s);
}

TEST_F(ScriptRunnerTest, RunsNothingOfACommandThatIsCutShort)
{
    // As when the application is killed while it writes.
    const QString command = u">'%1' && >'%2'"_s.arg(root.at(u"/first"), root.at(u"/second"));
    int length = 0;
    while (!root.exists(u"/first") && length < 1'000) {
        FreedesktopScriptRunner runner(
            layout, prompt("head -c " + QByteArray::number(length++) + " | /bin/sh 2>/dev/null\n"));
        run(runner, command);
        ASSERT_EQ(root.exists(u"/first"), root.exists(u"/second")) << length;
    }
    EXPECT_GT(length, command.size());
    EXPECT_TRUE(root.exists(u"/first"));
}

TEST_F(ScriptRunnerTest, FoldersGetTheUsualRightsUnderEachUmask)
{
    FreedesktopScriptRunner direct(layout, Elevation::none);
    FreedesktopScriptRunner prompted(layout, prompt("exec \"$@\"\n"));
    root.addFile(u"/helper", "#!/bin/sh\nmkdir \"$0.made\"; cat >/dev/null; echo '{}'\n");
    QFile(root.at(u"/helper")).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    ChildScriptRunner child(root.at(u"/helper"));
    const std::pair<ScriptRunner*, QString> rows[] = {
        {&direct, root.at(u"/a")}, {&prompted, root.at(u"/b")}, {&child, root.at(u"/helper.made")}};
    for (const mode_t mask : {0777 & ~0700, 0}) {
        const mode_t before = ::umask(mask);
        for (const auto& [runner, folder] : rows) {
            run(*runner, u"mkdir -p '%1'"_s.arg(folder));
            struct stat status {};
            EXPECT_EQ(::stat(folder.toUtf8().constData(), &status), 0) << folder.toStdString();
            EXPECT_EQ(status.st_mode & 07777, 0755U) << folder.toStdString();
            QDir().rmdir(folder);
        }
        ::umask(before);
    }
}

TEST_F(ScriptRunnerTest, RunsSeveralScriptsAtOnce)
{
    FreedesktopScriptRunner runner(layout, Elevation::none);
    const QString path = pipe();
    ScriptOutcome reader;
    ScriptOutcome writer;
    QCoro::Task<> reading = store(&runner, sourceOf(u"cat '"_s + path + u"'"_s), &reader);
    runTask(store(&runner, sourceOf(u"echo met > '"_s + path + u"'"_s), &writer));
    runTask(std::move(reading));
    EXPECT_EQ(reader.result, u"met"_s);
    EXPECT_EQ(writer.result, u""_s);
}

TEST_F(ScriptRunnerTest, OutlivesItsRunnerAndLetsTheEventLoopTurn)
{
    auto runner = std::make_unique<FreedesktopScriptRunner>(layout, Elevation::none);
    const QString path = pipe();
    ScriptOutcome outcome;
    QCoro::Task<> task = store(runner.get(), sourceOf(u"head -n 1 '"_s + path + u"'"_s), &outcome);
    runner.reset();
    QFile keptOpen(path);
    ASSERT_TRUE(keptOpen.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QTimer::singleShot(0, qApp, [&keptOpen] { keptOpen.write("turned\n"); });
    runTask(std::move(task));
    EXPECT_EQ(outcome.result, u"turned"_s);
}

/// Runs in a process of its own, started by the test below.
TEST_F(ScriptRunnerTest, DISABLED_EndsWhileAScriptRuns)
{
    FreedesktopScriptRunner runner(layout, Elevation::none);
    static ScriptOutcome never;
    store(&runner, sourceOf(qEnvironmentVariable("ORV_TEST_COMMAND")), &never);
    turnEventLoop();
}

TEST_F(ScriptRunnerTest, TheApplicationMayEndWhileAScriptRuns)
{
    const QString path = pipe();
    QProcess application;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ORV_TEST_COMMAND"_s, u"cat '%1' > '%1.out' && mv '%1.out' '%1.done'"_s.arg(path));
    // What waits for the script is left to the system on purpose, it is no leak.
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s);
    application.setProcessEnvironment(environment);
    application.start(
        QCoreApplication::applicationFilePath(),
        {u"--gtest_filter=*DISABLED_EndsWhileAScriptRuns"_s, u"--gtest_also_run_disabled_tests"_s});
    ASSERT_TRUE(application.waitForFinished());
    EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(application.exitCode(), 0) << application.readAllStandardError().constData();
    QFile writer(path);
    ASSERT_TRUE(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered)); // waits for the script to read
    writer.write("still here");
    writer.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return root.exists(u"/pipe.done"); }, 20'000));
    EXPECT_EQ(root.content(u"/pipe.done"), "still here");
}

} // namespace orvanlite::test
