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

// No Qt application object is made here: the text tool and usage errors must not pay for a window.
int main(int argc, char** argv)
{
    // The window lives long: what it prints is seen line by line, also in a log file.
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
