#include "support/TempRoot.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

/// The real executable: which stream a text goes to, in which bytes, and the exit status. No arguments that
/// look at the plugin folders of the machine.
TEST(PluginManagerProcess, StreamsAndExitStatus)
{
    const TempRoot home;
    const QByteArray banner =
        "🎛️ Plugin Manager - Audio Plugin Management Tool\n" + QByteArray(50, '=') + '\n';
    const struct {
        QStringList arguments;
        int status;
        QByteArray output;     ///< whole
        QByteArray errorStart; ///< empty: nothing at all
    } rows[] = {
        {{u"--version"_s}, 0, "2.4.0\n", ""},
        {{u"cli-command"_s, u"--action"_s, u"\uFEFFÄndern"_s},
         0,
         banner + "❌ Unknown action: \uFEFFÄndern\nAvailable actions: scan, list, enable, disable\n",
         ""},
        {{u"cli-command"_s, u"--action"_s}, 64, "", "Error: Missing value for '--action'\nUsage: "},
        {{u"fooo"_s}, 64, "", "Error: Unexpected argument 'fooo'\nUsage: "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments.join(u' ').toStdString());
        QProcess process;
        // No display and an unusable one asked for: an application object of Qt's GUI would end the process.
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"no-such-platform"_s);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(ORV_PLUGIN_MANAGER), row.arguments);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), row.status);
        EXPECT_EQ(process.readAllStandardOutput(), row.output);
        const QByteArray errors = process.readAllStandardError();
        EXPECT_TRUE(row.errorStart.isEmpty() ? errors.isEmpty() : errors.startsWith(row.errorStart))
            << errors.constData();
    }
    EXPECT_EQ(home.names(u""), QStringList{u"Users"_s}); // nothing was written
}

} // namespace orvanlite::test
