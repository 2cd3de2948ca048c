#include "cli/CommandLine.h"
#include "model/Console.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "shell/GUIApp.h"

#include <cstdio>

using namespace orvanlite;

namespace {

void printErrorLine(const QString& text)
{
    const QByteArray line = text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

/// The window lives long: what it prints is seen line by line, also in a log file.
int startGui(int& argc, char** argv)
{
    std::fflush(stdout);
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return runGui(argc, argv);
}

} // namespace

// No Qt application object is made here: the text tool and usage errors must not pay for a window.
int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromUtf8(argv[i]));
    const platform::SystemLayout layout = platform::SystemLayout::ofThisMachine();
    const auto files = platform::makeFileManager(layout);
    const CommandSurroundings surroundings{*files, layout, [&argc, argv] { return startGui(argc, argv); },
                                           &printLine, &printErrorLine};
    return runCommandLine(arguments, surroundings);
}
