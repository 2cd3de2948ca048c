#include "cli/CommandLine.h"
#include "model/Console.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Utf8.h"
#include "shell/app/GUIApp.h"

#include <cstdio>

using namespace orvanlite;

namespace {

void printErrorLine(const QString& text)
{
    const QByteArray line = text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

} // namespace

// No Qt application object here: the command-line tool and usage errors must start fast.
int main(int argc, char** argv)
{
    // Line-buffered, so that the output of the long-running GUI appears at once, even in a log file.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(platform::fromUtf8(argv[i]));
    const platform::SystemLayout layout = platform::SystemLayout::ofThisMachine();
    const auto files = platform::makeFileManager(layout);
    const CommandSurroundings surroundings{*files, layout, [&] { runGui(argc, argv, layout); }, &printLine,
                                           &printErrorLine};
    return runCommandLine(arguments, surroundings);
}
