#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "platform/posix/ChildScriptRunner.h"
#include "support/Fakes.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace orvanlite::test {

using namespace platform;

namespace {

QString sourceOf(const QString& command)
{
    return u"do shell script \""_s + command + u"\" with administrator privileges"_s;
}

/// The result, or "{number}: {message}" of the error.
QString text(const ScriptOutcome& outcome)
{
    EXPECT_EQ(outcome.succeeded(), outcome.result && !outcome.error);
    if (!outcome.error)
        return outcome.result.value_or(u"nothing"_s);
    EXPECT_EQ(outcome.result, std::nullopt);
    return outcome.error->value(u"NSAppleScriptErrorNumber"_s) + u": "_s +
           outcome.error->value(u"NSAppleScriptErrorMessage"_s);
}

class ScriptRunnerTest : public testing::Test {
protected:
    TempRoot root;
    SystemLayout layout = root.layout();

    static QString run(ScriptRunner& runner, const QString& command)
    {
        return text(resultOf(runner.execute(sourceOf(command), nullptr)));
    }
    [[nodiscard]] QString prompt(const QByteArray& script) const
    {
        root.addScript(u"/prompt", script);
        return root.at(u"/prompt");
    }
};

} // namespace

TEST_F(ScriptRunnerTest, ReturnsTheOutputOrTheError)
{
    FreedesktopScriptRunner runner(layout, Elevation::none);
    const std::pair<QString, QString> rows[] = {
        {u"echo a; echo"_s, u"a\n"_s},
        {u"true"_s, u""_s},
        {u"echo 'ü $HOME'; echo noise >&2"_s, u"ü $HOME"_s},
        {u""_s, u""_s},
        {u"cat; echo 'its input is not the script'"_s, u"its input is not the script"_s},
        {u"nothing"_s, u"127: /bin/sh: 1: nothing: not found"_s},
        {u"echo out; echo ' why ' >&2; exit 3"_s, u"3: why"_s},
        {u"exit 126"_s, u"126: The command exited with a non-zero status."_s},
        {u"kill -9 $$"_s, u"-2700: The command was stopped by a signal."_s},
    };
    for (const auto& [command, wanted] : rows)
        EXPECT_EQ(run(runner, command), wanted) << command.toStdString();
    EXPECT_TRUE(run(runner, u"mv 'it'\"'\"'s' x"_s).startsWith(u"-2741: "_s));
    EXPECT_TRUE(text(resultOf(runner.execute(u"beep"_s, nullptr))).startsWith(u"-1708: "_s));
    EXPECT_EQ(
        run(runner, u"head -c 3000000 /dev/zero | tr -c e e >&2; head -c 3000000 /dev/zero | tr -c o o"_s)
            .size(),
        3'000'000);
}

TEST_F(ScriptRunnerTest, ASandboxHasItsOwnHomeAndTools)
{
    root.addScript(u"/tools/killall", "echo stand-in \"$@\"\n");
    const QString wanted = layout.home + u"\nstand-in -9 AudioComponentRegistrar"_s;
    const QString command = u"echo ~; killall -9 AudioComponentRegistrar"_s;
    FreedesktopScriptRunner direct(layout, Elevation::none);
    EXPECT_EQ(run(direct, command), wanted);
    // It clears the environment, as the system's does.
    const QString clearing = prompt("exec env -i PATH=/usr/bin:/bin HOME=/ \"$@\"\n");
    for (const QString& runner : {QString(), QStringLiteral(ORV_ROOT_RUNNER_EXECUTABLE)}) {
        layout.rootRunner = runner;
        FreedesktopScriptRunner prompted(layout, clearing);
        EXPECT_EQ(run(prompted, command), wanted) << "without the root runner, which would refuse it";
    }
}

TEST_F(ScriptRunnerTest, TranslatesTheErrorsOfThePrompt)
{
    const std::tuple<QByteArray, QString, QString> rows[] = {
        {"[ $# = 1 ] && exec \"$@\"\n", u"echo ran"_s, u"ran"_s},
        {"exit 126\n", u"true"_s, u"-128: User canceled."_s},
        {"exec 0<&-; exit 126\n", QString(8'000'000, u' '), u"-128: User canceled."_s},
        {"echo 'Error executing command as another user: Request dismissed' >&2; exit 126\n", u"true"_s,
         u"-128: User canceled."_s},
        {"exit 127\n", u"true"_s, u"-60005: The authorization was denied."_s},
        {"printf 'Error executing command as another user: No\\n\\nReported.\\n' >&2; exit 127\n", u"true"_s,
         u"-60005: The authorization was denied. Error executing command as another user: No Reported."_s},
        {"echo 'Error creating textual authentication agent: no terminal' >&2; exit 127\n", u"true"_s,
         u"-60007: No authentication agent is running to ask for the password."_s},
        {"echo 'Error executing command as another user: No authentication agent found.' >&2; exit 127\n",
         u"true"_s, u"-60007: No authentication agent is running to ask for the password."_s},
        {"exec \"$@\"\n", u"echo 'sh: nothing: not found' >&2; exit 127"_s, u"127: sh: nothing: not found"_s},
    };
    layout.root.clear();
    for (const auto& [script, command, wanted] : rows) {
        FreedesktopScriptRunner runner(layout, prompt(script));
        EXPECT_EQ(run(runner, command), wanted) << script.constData();
    }
    FreedesktopScriptRunner missing(layout, root.at(u"/none"));
    const QString error = run(missing, u"true"_s);
    EXPECT_TRUE(error.startsWith(u"-60007: The password prompt cannot be started ("_s) &&
                error.contains(u"No such"))
        << error.toStdString();
}

TEST_F(ScriptRunnerTest, ThePromptStartsTheInstalledRunnerOrElseTheShell)
{
    const QString runner = QStringLiteral(ORV_ROOT_RUNNER_EXECUTABLE);
    layout.root.clear();
    const QString showsArguments = prompt("printf '%s|' \"$@\"; tr '\\000' '#'\n");
    for (const QString& installed : {runner, root.at(u"/none"), QString()}) {
        layout.rootRunner = installed;
        FreedesktopScriptRunner prompted(layout, showsArguments);
        const QString wanted = installed == runner ? runner + u"|a 'b'#"_s : u"/bin/sh|ulimit"_s;
        EXPECT_EQ(run(prompted, u"a 'b'"_s).left(wanted.size()), wanted);
    }
}

TEST_F(ScriptRunnerTest, TheInstalledRunnerRefusesOtherCommands)
{
    layout.root.clear();
    layout.rootRunner = QStringLiteral(ORV_ROOT_RUNNER_EXECUTABLE);
    root.addFile(u"/empty.sh", "#!/bin/sh\nn=0");
    const QByteArray user = QByteArray::number(::getuid());
    FreedesktopScriptRunner prompted(
        layout, prompt("exec env -i PATH=/usr/bin:/bin PKEXEC_UID=" + user + " \"$@\"\n"));
    EXPECT_EQ(run(prompted, u"chmod +x '%1' && '%1'"_s.arg(root.at(u"/empty.sh"))), u""_s);
    EXPECT_TRUE(run(prompted, u"touch '%1'"_s.arg(root.at(u"/canary")))
                    .startsWith(u"65: orvanlite-root-runner: Refused, this is"_s));
    EXPECT_FALSE(root.exists(u"/canary"));
    EXPECT_EQ(QProcess::execute(layout.rootRunner, {u"true"_s}), 64) << "commands are not arguments";
}

TEST_F(ScriptRunnerTest, RunsCommandsOfAnyLength)
{
    const QString folder = root.at(u"/Library/Audio/Plug-Ins/VST3/"_s + QString(200, u'n'));
    root.addFolder(folder.sliced(root.path().size()));
    FreedesktopScriptRunner direct(layout, Elevation::none);
    FreedesktopScriptRunner prompted(layout, prompt("exec \"$@\"\n"));
    // Longer than an argument can be.
    QStringList removals;
    for (int i = 0; i < 500; ++i) {
        const QString path = folder + u'/' + QString::number(i);
        ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
        removals.append(u"rm -rf '%1'"_s.arg(path));
    }
    EXPECT_GT(removals.join(u" && ").size(), 131'072);
    EXPECT_EQ(run(prompted, removals.join(u" && ")), u""_s);
    EXPECT_TRUE(QDir(folder).isEmpty());
    // 5 MB of shell built-ins.
    const QString check = u"[ -d '%1' ] && "_s.arg(folder);
    EXPECT_EQ(run(direct, check.repeated(20'000) + u"echo done"_s), u"done"_s);
    // Needs more than the shell's default stack.
    EXPECT_EQ(run(direct, u"true && "_s.repeated(250'000) + u"echo done"_s), u"done"_s);
}

TEST_F(ScriptRunnerTest, RunsNothingOfATruncatedCommand)
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

TEST_F(ScriptRunnerTest, CreatesFoldersWithTheUsualModeUnderAnyUmask)
{
    FreedesktopScriptRunner direct(layout, Elevation::none);
    FreedesktopScriptRunner prompted(layout, prompt("exec \"$@\"\n"));
    root.addScript(u"/helper", "mkdir \"$0.made\"; cat >/dev/null; echo '{}'\n");
    ChildScriptRunner child(root.at(u"/helper"));
    const std::pair<ScriptRunner*, QString> rows[] = {
        {&direct, root.at(u"/a")}, {&prompted, root.at(u"/b")}, {&child, root.at(u"/helper.made")}};
    for (const mode_t mask : {0777 & ~0700, 0}) {
        const mode_t before = ::umask(mask);
        for (const auto& [runner, folder] : rows) {
            run(*runner, u"mkdir -p '%1'"_s.arg(folder));
            EXPECT_EQ(statusOf(folder).st_mode & 07777, 0755U) << folder.toStdString();
            QDir().rmdir(folder);
        }
        ::umask(before);
    }
}

/// Runs in a separate process, started by the test below.
TEST_F(ScriptRunnerTest, DISABLED_EndsWhileAScriptRuns)
{
    FreedesktopScriptRunner runner(layout, Elevation::none);
    static ScriptOutcome never;
    storeResult(runner.execute(sourceOf(qEnvironmentVariable("ORV_TEST_COMMAND")), nullptr), &never);
    turnEventLoop();
}

TEST_F(ScriptRunnerTest, TheApplicationCanQuitWhileAScriptRuns)
{
    const QString path = root.at(u"/pipe");
    ::mkfifo(path.toUtf8().constData(), 0600);
    QProcess application;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ORV_TEST_COMMAND"_s, u"cat '%1' > '%1.out' && mv '%1.out' '%1.done'"_s.arg(path));
    // On purpose the suspended coroutine is never freed.
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s);
    application.setProcessEnvironment(environment);
    application.start(
        QCoreApplication::applicationFilePath(),
        {u"--gtest_filter=*DISABLED_EndsWhileAScriptRuns"_s, u"--gtest_also_run_disabled_tests"_s});
    ASSERT_TRUE(application.waitForFinished());
    EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(application.exitCode(), 0) << application.readAllStandardError().constData();
    QFile writer(path);
    ASSERT_TRUE(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered)); // blocks until the script reads
    writer.write("still here");
    writer.close();
    EXPECT_TRUE(waitFor([&] { return root.exists(u"/pipe.done"); }));
    EXPECT_EQ(root.content(u"/pipe.done"), "still here");
}

} // namespace orvanlite::test
