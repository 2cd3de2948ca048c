#include "platform/freedesktop/root-runner/Actions.h"
#include "platform/freedesktop/root-runner/CallingUser.h"
#include "platform/freedesktop/root-runner/Trees.h"
#include "support/TempRoot.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryFile>

#include <csignal>
#include <map>

namespace orvanlite::test {

using namespace root_runner;

namespace {

constexpr uid_t kNobody = 65534;

/// Every path below the root with its kind, mode, owner and content.
std::map<QString, QString> treeOf(const TempRoot& root)
{
    std::map<QString, QString> tree;
    QDirIterator each(root.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (each.hasNext()) {
        const QString path = each.next();
        const QString name = path.sliced(root.path().size());
        struct stat status {};
        ::lstat(path.toUtf8().constData(), &status);
        QString text = QString::number(status.st_mode, 8) + u' ' + QString::number(status.st_uid);
        if (S_ISREG(status.st_mode))
            text += u' ' + QString::fromUtf8(root.content(name)).remove(root.path());
        else if (S_ISLNK(status.st_mode))
            text += u' ' + QFileInfo(path).symLinkTarget().remove(root.path());
        tree.emplace(name, text);
    }
    return tree;
}

QByteArray quoted(const QByteArray& path) { return '\'' + QByteArray(path).replace('\'', R"('"'"')") + '\''; }

/// The lines of a batch script. "@" is the root.
QByteArray batch(const QList<std::pair<QByteArray, QByteArray>>& moves,
                 const QByteArray& counter = "@/counter")
{
    QByteArray text = "#!/bin/sh\nn=0";
    for (const auto& [source, destination] : moves) {
        text += "\nmkdir -p " + quoted(destination.first(destination.lastIndexOf('/'))) + " && mv " +
                quoted(source) + ' ' + quoted(destination) + "\nn=$((n+1)) && printf '%d' $n > " +
                quoted(counter);
    }
    return text;
}

const QByteArray kFlush =
    " && rm -rf ~/Library/Caches/AudioUnitCache/* /Library/Caches/com.apple.audiounits.cache 2>/dev/null"
    " && killall -9 AudioComponentRegistrar 2>/dev/null; true";
const QByteArray kRunBatch = "chmod +x '@/batch.sh' && '@/batch.sh'";
const QByteArray kVst3 = "@/Library/Audio/Plug-Ins/VST3/";
const QByteArray kDisabled = "@/Library/Audio/Plug-Ins/Disabled/VST3/";
const QByteArray kOdd = "It's\n \"odd\" $(x) \\ ü.vst3";

class RootRunnerTest : public testing::Test {
protected:
    TempRoot root;
    QTemporaryFile errors;
    QByteArray lastError;
    bool isConfined = false; ///< by what the child inherits

    void SetUp() override { ASSERT_TRUE(errors.open()); }

    static void fill(const TempRoot& in)
    {
        in.addFile(u"/Library/Audio/Plug-Ins/VST3/A.vst3/Contents/code", "a");
        in.addFile(u"/Library/Audio/Plug-Ins/VST3/file.vst3", "file");
        in.addFile(u"/Library/Audio/Plug-Ins/VST3/Vendor/B.vst3/code", "b");
        in.addFile(u"/Library/Audio/Plug-Ins/VST3/"_s + QString::fromUtf8(kOdd), "odd");
        in.addFile(u"/Library/Audio/Plug-Ins/VST3/locked/code", "locked");
        QFile::link(u"A.vst3"_s, in.at(u"/Library/Audio/Plug-Ins/VST3/link.vst3"));
        QFile::link(u"nowhere"_s, in.at(u"/Library/Audio/Plug-Ins/VST3/dangling.vst3"));
        in.addFile(u"/Library/Audio/Plug-Ins/Disabled/VST3/full.vst3/A.vst3/code", "occupied");
        in.addFile(u"/Library/Audio/Plug-Ins/Disabled/VST3/file.vst3", "occupied");
        in.addFolder(u"/Library/Audio/Plug-Ins/Disabled/VST3/empty.vst3");
        in.addFile(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/U.clap", "u");
        in.addFile(u"/Applications/Waves/Plug-Ins V14/W.bundle/code", "w");
        in.addFile(u"/root/Library/Caches/AudioUnitCache/entry/file");
        in.addFile(u"/root/Library/Caches/AudioUnitCache/.hidden");
        in.addFile(u"/usr/bin/killall", "#!/bin/sh\necho \"$@\" > \"${0%/*}/killed\"\n");
        in.setMode(u"/usr/bin/killall", 0755);
    }

    /// "@" is the root, also in the script that is put there.
    static QByteArray in(const TempRoot& where, QByteArray text)
    {
        return text.replace('@', where.path().toUtf8());
    }
    static void addScript(const TempRoot& to, const QByteArray& script)
    {
        to.addFile(u"/batch.sh", in(to, script));
        to.setMode(u"/batch.sh", 0755);
    }
    static void give(const TempRoot& given, uid_t user)
    {
        if (user != ::geteuid())
            QProcess::execute(u"chown"_s, {u"-hR"_s, QString::number(user), given.path()});
    }

    [[nodiscard]] static Surroundings surroundings(const TempRoot& of, uid_t user)
    {
        const std::string path = of.path().toStdString();
        // The user database may end a home folder with a slash.
        return {path, path + "/Users/tester/", path + "/root", user, ::getegid()};
    }

    static void confine()
    {
        ::umask(0777);
        for (const auto& [resource, soft] :
             {std::pair{RLIMIT_FSIZE, rlim_t{0}}, {RLIMIT_NOFILE, rlim_t{20}}}) {
            rlimit limit{};
            ::getrlimit(resource, &limit);
            limit.rlim_cur = soft;
            ::setrlimit(resource, &limit);
        }
    }

    /// In a child, as the user `own` on behalf of the user `caller`.
    int runAs(const TempRoot& where, const QByteArray& command, uid_t own, uid_t caller)
    {
        const QByteArray input = in(where, command) + '\0';
        errors.resize(0);
        const pid_t child = ::fork();
        if (child == 0) {
            if (isConfined)
                confine();
            const bool isOther = own == ::geteuid() || ::setuid(own) == 0;
            ::dup2(errors.handle(), STDERR_FILENO);
            dropInheritedState();
            for (const int signal : {SIGPIPE, SIGXFSZ, SIGXCPU, SIGALRM, SIGVTALRM, SIGPROF})
                ::raise(signal);
            ::_exit(isOther ? run({input.constData(), std::size_t(input.size())}, surroundings(where, caller))
                            : 99);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        errors.seek(0);
        lastError = errors.readAll();
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int runHere(const TempRoot& where, const QByteArray& command)
    {
        return runAs(where, command, ::geteuid(), ::geteuid());
    }

    /// The same by the shell.
    static int runShell(const TempRoot& where, const QByteArray& command, uid_t own)
    {
        QProcess shell;
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, where.at(u"/root"));
        environment.insert(u"PATH"_s, where.at(u"/usr/bin") + u":/usr/bin:/bin"_s);
        shell.setProcessEnvironment(environment);
        shell.setChildProcessModifier([own] {
            ::umask(022);
            if (own != ::geteuid() && ::setuid(own) != 0)
                ::_exit(99);
        });
        shell.start(u"/bin/sh"_s, QStringList());
        shell.write(in(where, command));
        shell.closeWriteChannel();
        shell.waitForFinished();
        return shell.exitCode();
    }
};

} // namespace

TEST_F(RootRunnerTest, DoesWhatTheShellDoes)
{
    const QByteArray user = "@/Users/tester/Library/Audio/Plug-Ins/CLAP/";
    const QByteArray waves = "@/Applications/Waves/Plug-Ins V14/";
    const auto mv = [](const QByteArray& from, const QByteArray& to) {
        return "mv " + quoted(from) + ' ' + quoted(to);
    };
    const auto mkdirMv = [&](const QByteArray& from, const QByteArray& to) {
        return "mkdir -p " + quoted(to.first(to.lastIndexOf('/'))) + " && " + mv(from, to);
    };
    const auto rm = [](const QByteArray& path) { return "rm -rf " + quoted(path); };
    struct Row {
        const char* name;
        QByteArray command, script = {};
    };
    const Row rows[] = {
        {"nothing", ""},
        {"first of its format", mkdirMv(user + "U.clap", "@/Library/Audio/Plug-Ins/Disabled/CLAP/U.clap")},
        {"waves", mkdirMv(waves + "W.bundle", waves + "Disabled/W.bundle")},
        {"odd name", mkdirMv(kVst3 + kOdd, kDisabled + kOdd)},
        {"over a file", mv(kVst3 + "file.vst3", kDisabled + "file.vst3")},
        {"folder over a file", mv(kVst3 + "A.vst3", kDisabled + "file.vst3")},
        {"into a folder", mv(kVst3 + "A.vst3", kDisabled + "empty.vst3")},
        {"into a folder where its name is taken", mv(kVst3 + "A.vst3", kDisabled + "full.vst3")},
        {"no folder", mv(kVst3 + "A.vst3", "@/Library/Audio/Plug-Ins/Disabled/CLAP/A")},
        {"a file as folder", mkdirMv(kVst3 + "A.vst3", kVst3 + "file.vst3/x/A")},
        {"onto itself", mv(kVst3 + "file.vst3", kVst3 + "file.vst3")},
        {"below itself", mkdirMv(kVst3 + "A.vst3", kVst3 + "A.vst3/sub/A.vst3")},
        {"a link", mv(kVst3 + "link.vst3", kDisabled + "link.vst3")},
        {"over a dangling link", mv(kVst3 + "file.vst3", kVst3 + "dangling.vst3")},
        {"with flush", mkdirMv(kVst3 + "A.vst3", kDisabled + "A.vst3") + kFlush},
        {"missing, no flush", mv(kVst3 + "none", kDisabled + "none") + kFlush},
        {"removals", rm(kVst3 + "A.vst3") + " && " + rm(kVst3 + kOdd) + " && " + rm(kVst3 + "link.vst3") +
                         " && " + rm(kVst3 + "none") + " && " + rm(kVst3 + "file.vst3/none") + " && " +
                         rm(kVst3 + "Vendor")},
        {"only root can", rm(kVst3 + "locked") + " && " + rm(kVst3 + "A.vst3")},
        {"empty batch", kRunBatch, batch({})},
        {"batch with failures", kRunBatch,
         batch({{kVst3 + "A.vst3", kDisabled + "A.vst3"},
                {kVst3 + "none", kDisabled + "none"},
                {kVst3 + "locked/code", kDisabled + "code"},
                {kVst3 + kOdd, kDisabled + kOdd},
                {user + "U.clap", "@/Library/Audio/Plug-Ins/Disabled/CLAP/U.clap"},
                {kVst3 + "Vendor/B.vst3", kDisabled + "empty.vst3"}})},
        {"counter cannot be written", kRunBatch,
         batch({{kVst3 + "A.vst3", kDisabled + "A.vst3"}}, "@/none/counter")},
    };
    for (const uid_t own : {::geteuid(), kNobody}) {
        if (own != ::geteuid() && ::geteuid() != 0)
            continue; // only root can become another user
        for (const auto& row : rows) {
            if (own == kNobody && !row.command.contains("locked") && !row.script.contains("locked"))
                continue; // the same as for root
            SCOPED_TRACE(testing::Message() << row.name << " as " << own);
            const TempRoot twins[2];
            for (const TempRoot& twin : twins) {
                fill(twin);
                if (!row.script.isEmpty())
                    addScript(twin, row.script);
                give(twin, own);
                twin.setMode(u"/Library/Audio/Plug-Ins/VST3/locked", 0500);
            }
            const int wanted = runShell(twins[0], row.command, own);
            const int got = runAs(twins[1], row.command, own, own);
            EXPECT_EQ(got, wanted) << lastError.constData();
            EXPECT_EQ(treeOf(twins[1]), treeOf(twins[0]));
        }
    }
}

TEST_F(RootRunnerTest, RefusesEverythingElseBeforeItDoesAnything)
{
    fill(root);
    const QByteArray a = quoted(kVst3 + "A.vst3");
    const QByteArray rmA = "rm -rf " + a;
    const QByteArray rmFile = "rm -rf " + quoted(kVst3 + "file.vst3");
    const QByteArray away = quoted(kDisabled + "A.vst3");
    // Other texts, separated by "|". %a and %f are plugins, %d is a destination.
    QByteArray texts =
        " |true|touch '@/canary'|"
        "rm -r %a|rm -rf  %a|rm -rf %a | rm -rf %a|rm -rf %a;|rm -rf %a &|rm -rf %a && |rm -rf %a\n|"
        "rm -rf %a && touch '@/canary'|rm -rf %a; rm -rf %f|rm -rf %a > '@/canary'|"
        "rm -rf %a %f|rm -rf %a/Contents|rm -rf %a''|rm -rf %a*|rm -rf -- %a|rm -rf ''|rm -rf %a$flush|"
        "rm -rf @/Library/Audio/Plug-Ins/VST3/A.vst3|rm -rf \"@/Library/Audio/Plug-Ins/VST3/A.vst3\"|"
        "rm -rf '@/Library/Audio/Plug-Ins/VST3/A.vst3|rm -rf '@/Library/Audio/Plug-Ins/VST3/A.vst3'\"'\"'|"
        "rm -rf @/Library/Audio/Plug-Ins/VST3/$(touch '@/canary')|"
        "mv %a|mv %a %d %d|mv -f %a %d|mv %a %d && rm -rf %a|mv %a %d$flush; true|mkdir -p '@/Library/x'|"
        "mkdir -p '@/Library/Audio/Plug-Ins/Disabled/CLAP' && mv %a %d|"
        "chmod +x '@/batch.sh'|'@/batch.sh'|chmod +x '@/batch.sh' && '@/other.sh'|chmod 777 '@/batch.sh'|"
        "chmod +x '@/none.sh' && '@/none.sh'|chmod +x '@/Library' && '@/Library'";
    texts.replace("%a", a).replace("%f", rmFile.sliced(7)).replace("%d", away).replace("$flush", kFlush);
    QByteArrayList commands = texts.split('|');
    // Other files. What comes before them is not done either.
    const QByteArray paths =
        "relative|/|@|@/Library|@/Library/Audio/Plug-Ins|@/Library/Audio/Plug-Ins/|"
        "@/Library/Audio/Plug-Ins/VST3|@/Library/Audio/Plug-Ins/VST3/|@/Library/Audio/Plug-Ins/VST3/A.vst3/|"
        "@/Library/Audio/Plug-Ins/VST3//A.vst3|@//Library/Audio/Plug-Ins/VST3/A.vst3|"
        "@/Library/Audio/Plug-Ins/VST3/.|@/Library/Audio/Plug-Ins/VST3/..|"
        "@/Library/Audio/Plug-Ins/VST3/../VST3/x|@/Library/Audio/Plug-Ins/VST3/./x|"
        "@/Library/Audio/Plug-Ins/Disabled|@/Library/Audio/Plug-Ins/Disabled/VST3|"
        "@/Library/Audio/Plug-Ins Copy/VST3/x|@/Library/Audio/Presets/V/x|@/library/audio/plug-ins/vst3/x|"
        "@/Library/Application Support/Avid/Audio/Plug-Ins|@/Applications/Waves|@/Applications/Other/x/y|"
        "@/Applications/Waves/Plug-Ins V14|@/Applications/Waves/Plug-Ins V14/Disabled|"
        "@/etc/passwd|/etc/passwd|/Library/Audio/Plug-Ins/VST3/x|@/Users/tester|@/Users/tester/x/y/z|"
        "@/Users/tester/Applications/Waves/Plug-Ins V14/x|@/Users/other/Library/Audio/Plug-Ins/VST3/x";
    for (const QByteArray& path : paths.split('|')) {
        commands.append(rmFile + " && rm -rf " + quoted(path));
        commands.append("mv " + quoted(path) + ' ' + away);
        commands.append("mv " + a + ' ' + quoted(path));
        commands.append("script " + batch({{kVst3 + "file.vst3", kDisabled + "b"}, {path, kDisabled + "c"}}));
    }
    // Names that end sooner for the system than in the text. "#" is a NUL.
    const PluginPaths pluginPaths(surroundings(root, ::geteuid()));
    for (QByteArray path : {"..#/..#/..#/canary/x", "..#", ".#/x", "x#y/x", "A.vst3#", "#"}) {
        path = kVst3 + path.replace('#', '\0');
        EXPECT_FALSE(pluginPaths.holds(in(root, path).toStdString())) << path.constData();
        commands.append("script " + batch({{kVst3 + "A.vst3", path}}));
        commands.append("script " + batch({{path, kDisabled + "A.vst3"}}));
    }
    commands.append("script " +
                    batch({{kVst3 + "A.vst3", kDisabled + "A.vst3"}}, QByteArray("@/canary") + '\0'));
    const QByteArray good = batch({{kVst3 + "A.vst3", kDisabled + "A.vst3"}});
    for (const QByteArray& script :
         {QByteArray(), QByteArray("#!/bin/sh"), good + '\n', '\n' + good, good + "\ntouch '@/canary'",
          good.chopped(1), good.first(good.lastIndexOf('\n')), QByteArray(good).replace("n=0", "n=1"),
          QByteArray(good).replace("/bin/sh", "/bin/bash"),
          QByteArray(good).replace("n+1", "n+$(touch '@/canary')"),
          QByteArray(good).replace("mkdir -p", "mkdir"), QByteArray(good).replace("> '@", ">> '@"),
          good + batch({{kVst3 + "x", kDisabled + "x"}}, "@/other").sliced(13), "\xef\xbb\xbf" + good,
          QByteArray(good).replace('\n', "\r\n"), good + QByteArray(1, '\0')})
        commands.append("script " + script);

    const auto before = treeOf(root);
    for (QByteArray command : commands) {
        SCOPED_TRACE(command.constData());
        if (command.startsWith("script ")) {
            addScript(root, command.sliced(7));
            command = kRunBatch;
        }
        EXPECT_EQ(runHere(root, command), kRefused);
        EXPECT_TRUE(lastError.startsWith("orvanlite-root-runner: Refused, ")) << lastError.constData();
        QFile::remove(root.at(u"/batch.sh"));
    }
    // An input that is cut short, or two in one.
    const std::string whole = in(root, rmA).toStdString() + '\0';
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(run(whole.substr(0, length), surroundings(root, ::geteuid())), kRefused);
    EXPECT_EQ(run(whole + whole, surroundings(root, ::geteuid())), kRefused);
    EXPECT_EQ(treeOf(root), before);
    EXPECT_EQ(runHere(root, rmA), 0) << "of what is refused above, this is the origin";
}

TEST_F(RootRunnerTest, FollowsNoLinkOnTheWayToAPlugin)
{
    fill(root);
    root.addFile(u"/etc/VST3/x", "precious");
    QFile::link(root.at(u"/etc"), root.at(u"/Library/Audio/Plug-Ins/VST3/away"));
    QFile::link(root.at(u"/etc/VST3"), root.at(u"/Library/Audio/Plug-Ins/VST"));
    QFile::link(root.at(u"/etc"), root.at(u"/Users/tester/Library/Application Support"));
    const auto before = treeOf(root);
    for (const QByteArray& command :
         {QByteArray("rm -rf '@/Library/Audio/Plug-Ins/VST/x'"),
          QByteArray("rm -rf '@/Library/Audio/Plug-Ins/VST3/away/VST3/x'"),
          QByteArray("rm -rf '@/Users/tester/Library/Application Support/Avid/Audio/Plug-Ins/x'"),
          "mv '@/Library/Audio/Plug-Ins/VST/x' " + quoted(kDisabled + "x"),
          "mv " + quoted(kVst3 + "A.vst3") + " '@/Library/Audio/Plug-Ins/VST/A.vst3'",
          "mv " + quoted(kVst3 + "A.vst3") + ' ' + quoted(kVst3 + "away"),
          "mkdir -p '@/Library/Audio/Plug-Ins/VST/new' && mv " + quoted(kVst3 + "A.vst3") +
              " '@/Library/Audio/Plug-Ins/VST/new/A'"}) {
        SCOPED_TRACE(command.constData());
        EXPECT_EQ(runHere(root, command), 1);
        EXPECT_TRUE(lastError.contains("is a link")) << lastError.constData();
    }
    EXPECT_EQ(treeOf(root), before);
    // Nor in a folder that is removed, nor one that takes the place of a checked folder.
    const PluginPaths paths(surroundings(root, ::geteuid()));
    const Entry entry = paths.open(root.at(u"/Library/Audio/Plug-Ins/VST3/Vendor/x").toStdString());
    QFile::rename(root.at(u"/Library/Audio/Plug-Ins/VST3/Vendor"), root.at(u"/kept"));
    QFile::link(root.at(u"/etc/VST3"), root.at(u"/Library/Audio/Plug-Ins/VST3/Vendor"));
    removeTree(entry.folder, entry.name);
    QFile::link(root.at(u"/etc"), root.at(u"/Library/Audio/Plug-Ins/VST3/A.vst3/link"));
    for (const char* each : {"away", "Vendor", "A.vst3"})
        EXPECT_EQ(runHere(root, "rm -rf " + quoted(kVst3 + each)), 0) << each;
    EXPECT_EQ(root.content(u"/etc/VST3/x"), "precious");
}

TEST_F(RootRunnerTest, ReadsAndCountsWithTheRightsOfTheCaller)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root acts for others";
    fill(root);
    root.setMode(u"", 0755);
    root.addFile(u"/secret/counter", "0");
    root.setMode(u"/secret", 0700);
    root.addFolder(u"/theirs");
    for (const QStringView folder : {u"/theirs", u"/Users/tester"})
        ::chown(root.at(folder).toUtf8().constData(), kNobody, kNobody);
    const QByteArray source = kVst3 + "A.vst3";
    const QByteArray destination = kDisabled + "A.vst3";
    const struct {
        const char* name;
        QByteArray counter;
        uid_t owner;
        mode_t mode;
        int status;
    } rows[] = {
        {"of root", "@/theirs/counter", 0, 0644, kRefused},
        {"of another user", "@/theirs/counter", 4711, 0644, kRefused},
        {"writable by others", "@/theirs/counter", kNobody, 0602, kRefused},
        {"writable by a group", "@/theirs/counter", kNobody, 0660, kRefused},
        {"counter of root", "@/secret/counter", kNobody, 0600, 2},
        {"link to a counter of root", "@/theirs/link", kNobody, 0600, 2},
        {"theirs", "@/theirs/counter", kNobody, 0600, 0},
    };
    QFile::link(root.at(u"/secret/counter"), root.at(u"/theirs/link"));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        addScript(root, batch({{source, destination}, {destination, source}}, row.counter));
        root.setMode(u"/batch.sh", row.mode);
        ::chown(root.at(u"/batch.sh").toUtf8().constData(), row.owner, 0);
        EXPECT_EQ(runAs(root, kRunBatch, 0, kNobody), row.status) << lastError.constData();
        EXPECT_TRUE(root.exists(u"/Library/Audio/Plug-Ins/VST3/A.vst3"));
    }
    EXPECT_EQ(root.content(u"/secret/counter"), "0");
    EXPECT_EQ(root.content(u"/theirs/counter"), "2");
    EXPECT_EQ(QFileInfo(root.at(u"/theirs/counter")).ownerId(), kNobody);
    // A home folder that is another user's.
    EXPECT_EQ(runAs(root, "rm -rf '@/Users/tester/Library/Audio/Plug-Ins/CLAP/U.clap'", 0, 4711), 1);
    EXPECT_TRUE(root.exists(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/U.clap"));
}

TEST_F(RootRunnerTest, IsNotBoundByWhatItInherits)
{
    fill(root);
    isConfined = true;
    root.addFolder(u"/Library/Audio/Plug-Ins/VST3/deep"_s + QString(u"/d"_s).repeated(300));
    EXPECT_EQ(runHere(root, "rm -rf " + quoted(kVst3 + "deep")), 0) << lastError.constData();
    addScript(root, batch({{kVst3 + "A.vst3", "@/Library/Audio/Plug-Ins/Disabled/new/A.vst3"}}));
    EXPECT_EQ(runHere(root, kRunBatch), 0) << lastError.constData();
    EXPECT_EQ(root.content(u"/counter"), "1");
}

TEST_F(RootRunnerTest, MovesToAnotherFileSystem)
{
    const QTemporaryDir volume(u"/dev/shm/orvanlite-XXXXXX"_s);
    if (!volume.isValid() || statusOf(volume.path()).st_dev == statusOf(root.path()).st_dev)
        GTEST_SKIP() << "no second file system here";
    fill(root);
    QFile::link(u"Contents"_s, root.at(u"/Library/Audio/Plug-Ins/VST3/A.vst3/link"));
    const QString source = root.at(u"/Library/Audio/Plug-Ins/VST3/A.vst3");
    const std::array times{timespec{1, 2}, timespec{3, 4}};
    ::utimensat(AT_FDCWD, (source + u"/Contents"_s).toUtf8().constData(), times.data(), 0);
    root.setMode(u"/Library/Audio/Plug-Ins/VST3/A.vst3/Contents/code", 04751);
    const auto entryIn = [](const QString& folder, const char* name) {
        return Entry{Descriptor(::open(folder.toUtf8().constData(), O_PATH | O_DIRECTORY)), name};
    };
    const QString folder = root.at(u"/Library/Audio/Plug-Ins/VST3");
    // A name that another user could have guessed, in the time when it was the process's number.
    const QString foreign = u".orvanlite-"_s + QString::number(::getpid());
    QDir(volume.path()).mkpath(foreign + u"/theirs"_s);
    moveTree(entryIn(folder, "A.vst3"), entryIn(volume.path(), "A.vst3"));
    EXPECT_FALSE(QFile::exists(source));
    const struct stat copied = statusOf(volume.filePath(u"A.vst3/Contents"_s));
    EXPECT_EQ(std::pair(copied.st_mtim.tv_sec, copied.st_mode & 07777), std::pair(time_t(3), mode_t(0755)));
    const struct stat code = statusOf(volume.filePath(u"A.vst3/Contents/code"_s));
    EXPECT_EQ(std::pair(code.st_size, code.st_mode & 07777), std::pair(off_t(1), mode_t(0751)));
    EXPECT_EQ(QFileInfo(volume.filePath(u"A.vst3/link"_s)).symLinkTarget(),
              volume.filePath(u"A.vst3/Contents"_s));
    // One that cannot be copied stays, and leaves nothing there.
    ::mkfifo(root.at(u"/Library/Audio/Plug-Ins/VST3/Vendor/pipe").toUtf8().constData(), 0600);
    EXPECT_THROW(moveTree(entryIn(folder, "Vendor"), entryIn(volume.path(), "Vendor")), Failure);
    EXPECT_THROW(moveTree(entryIn(folder, "locked"), entryIn(volume.path(), "A.vst3")), Failure)
        << "not empty";
    EXPECT_EQ(QDir(volume.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              (QStringList{foreign, u"A.vst3"_s}));
    EXPECT_TRUE(QFile::exists(volume.filePath(foreign + u"/theirs"_s)));
    EXPECT_TRUE(root.exists(u"/Library/Audio/Plug-Ins/VST3/Vendor/B.vst3/code"));
}

TEST_F(RootRunnerTest, CopiesOnlyIntoAFolderOfItsOwn)
{
    const Descriptor parent(::open(root.path().toUtf8().constData(), O_PATH | O_DIRECTORY));
    const auto isTaken = [&](mode_t mode, const char* name = "folder") {
        root.addFolder(u"/folder");
        root.setMode(u"/folder", mode);
        try {
            static_cast<void>(openNewFolder(parent, name));
        } catch (const Failure&) {
            return false;
        }
        return true;
    };
    EXPECT_TRUE(isTaken(0700) && isTaken(02700)) << "the second has inherited its group";
    EXPECT_FALSE(isTaken(0710) || isTaken(0701));
    QFile::link(u"folder"_s, root.at(u"/link"));
    EXPECT_FALSE(isTaken(0700, "link"));
    if (::geteuid() == 0) { // only root can give it away
        ::chown(root.at(u"/folder").toUtf8().constData(), kNobody, kNobody);
        EXPECT_FALSE(isTaken(0700)) << "of another user";
        ::chown(root.at(u"/folder").toUtf8().constData(), 0, 0);
    }
    root.addFile(u"/folder/x");
    EXPECT_FALSE(isTaken(0700)) << "not empty";
}

TEST_F(RootRunnerTest, DeletesTwentyThousand)
{
    QByteArray command;
    root.addFolder(u"/Library/Audio/Plug-Ins/VST3");
    for (int i = 0; i < 20'000; ++i) {
        const QByteArray path = quoted(kVst3 + QByteArray::number(i));
        const Descriptor file(::creat(in(root, path).chopped(1).sliced(1).constData(), 0644));
        command += (i ? " && rm -rf " : "rm -rf ") + path;
    }
    EXPECT_EQ(runHere(root, command), 0);
    EXPECT_EQ(root.names(u"/Library/Audio/Plug-Ins/VST3"), QStringList());
}

} // namespace orvanlite::test
