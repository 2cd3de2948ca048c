#include "support/Fakes.h"
#include "support/PrivateBus.h"

namespace orvanlite::test {

namespace {

using Variables = QMap<QString, QString>;

class Start {
public:
    QProcess process;

    Start(const TempRoot& root, const QString& bus, int busyMilliseconds = 0)
    {
        run(root, bus, QStringLiteral(ORV_SANDBOX_APPLICATION), {},
            {{u"QT_QPA_PLATFORM"_s, u"offscreen"_s},
             {u"ORV_SANDBOX_ROOT"_s, root.path()},
             {u"ORV_BUSY_MILLISECONDS"_s, QString::number(busyMilliseconds)}});
    }
    /// The installed executable on the application folder of a sandbox; opening a window would end it.
    Start(const TempRoot& root, const QString& bus, const QStringList& arguments, Variables variables)
    {
        variables.insert(u"XDG_DATA_HOME"_s, root.layout().applicationSupport);
        variables.insert(u"QT_QPA_PLATFORM"_s, u"no-such-platform"_s);
        run(root, bus, QStringLiteral(ORV_PLUGIN_MANAGER), arguments, variables);
    }
    ~Start()
    {
        process.kill();
        process.waitForFinished();
    }

    bool says(const QByteArray& line)
    {
        return waitFor([&] {
            while (process.canReadLine()) {
                if (process.readLine().trimmed() == line)
                    return true;
            }
            return false;
        });
    }

private:
    void run(const TempRoot& root, const QString& bus, const QString& program, const QStringList& arguments,
             const Variables& variables)
    {
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, root.layout().home);
        if (!bus.isEmpty())
            environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus);
        for (auto each = variables.begin(); each != variables.end(); ++each)
            environment.insert(each.key(), each.value());
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
    }
};

} // namespace

TEST(SingleInstance, SecondStartShowsTheWindowOfTheFirst)
{
    const PrivateBus bus;
    const TempRoot root;
    Start first(root, bus.address());
    ASSERT_TRUE(first.says("minimized"));

    const QByteArray launch = "🚀 Launching Orvanlite GUI...\n";
    const QByteArray noBus =
        "Error: Orvanlite is already running, and its window cannot be reached over the session bus.\n";
    const Variables token{{u"XDG_ACTIVATION_TOKEN"_s, u"t1"_s}};
    const Variables startupId{{u"DESKTOP_STARTUP_ID"_s, u"t2"_s}};
    // Arguments, bus and environment; then status, start of the output, errors and effect on the first
    // instance.
    const std::tuple<QStringList, QString, Variables, int, QByteArray, QByteArray, QByteArray> rows[] = {
        {{}, bus.address(), token, 0, launch, "", "shown t1"},
        {{u"gui-command"_s}, bus.address(), startupId, 0, launch, "", "shown t2"},
        {{}, {}, {}, 1, launch, noBus, ""},
        {{u"cli-command"_s}, bus.address(), {}, 0, "🎛️ Plugin Manager", "", ""},
    };
    for (const auto& [arguments, address, environment, status, output, errors, effect] : rows) {
        SCOPED_TRACE(qPrintable(arguments.join(u' ') + u" on bus "_s + address));
        Start second(root, address, arguments, environment);
        ASSERT_TRUE(second.process.waitForFinished());
        EXPECT_EQ(second.process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(second.process.exitCode(), status);
        EXPECT_TRUE(second.process.readAllStandardOutput().startsWith(output));
        EXPECT_EQ(second.process.readAllStandardError(), errors);
        EXPECT_TRUE(effect.isEmpty() || (first.says(effect) && first.says("minimized")));
    }

    const TempRoot otherRoot;
    Start other(otherRoot, bus.address());
    EXPECT_TRUE(other.says("minimized")) << "another application folder";
    first.process.kill();
    ASSERT_TRUE(first.process.waitForFinished());
    Start successor(root, bus.address());
    EXPECT_TRUE(successor.says("minimized")) << "after a crash";
}

TEST(SingleInstance, StartDoesNotWaitForABusyInstance)
{
    const PrivateBus bus;
    const TempRoot root;
    Start first(root, bus.address(), 3'000);
    ASSERT_TRUE(first.says("minimized"));
    Start second(root, bus.address(), {}, {});
    ASSERT_TRUE(second.process.waitForFinished());
    EXPECT_EQ(second.process.exitCode(), 1);
    EXPECT_EQ(
        second.process.readAllStandardError(),
        "Error: Orvanlite is already running, and busy: its window comes to the front when it has finished.\n");
    EXPECT_TRUE(first.says("shown"));
}

TEST(SingleInstance, OneOfTwoSimultaneousStartsStays)
{
    const PrivateBus bus;
    const TempRoot root;
    Start one(root, bus.address());
    Start two(root, bus.address());
    while (!one.process.waitForFinished(20) && !two.process.waitForFinished(20)) {
    }
    Start& loser = one.process.state() == QProcess::NotRunning ? one : two;
    EXPECT_EQ(loser.process.exitCode(), 0);
    EXPECT_TRUE((&loser == &one ? two : one).says("minimized"));
}

} // namespace orvanlite::test
