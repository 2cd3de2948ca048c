#include "Fuzz.h"

#include "operations/ShellCommands.h"
#include "platform/AdministratorScript.h"
#include "platform/SystemLayout.h"
#include "platform/freedesktop/root-runner/Commands.h"

using namespace orvanlite;
using namespace Qt::StringLiterals;

namespace {

/// Paths pass through quoting and the AppleScript literal unchanged, or the script does not compile.
void requireSafeCommands(const QString& source, const QString& destination)
{
    const root_runner::Move move{source.toStdString(), destination.toStdString(), true};
    const bool hasNul = (source + destination).contains(QChar::Null);
    const QString command = moveCommand(source, destination, ParentFolder::create);
    const auto read = root_runner::parseCommand(command.toStdString());
    require(hasNul ? !read : read == root_runner::Command(root_runner::SingleMove{move, false}));
    const auto script = platform::parseAdministratorScript(administratorScript(command));
    require(!std::holds_alternative<platform::OtherScript>(script));
    require(!std::holds_alternative<QString>(script) || std::get<QString>(script) == command);

    const BatchItem item{{}, source, destination};
    const auto batch = root_runner::parseBatch(batchScript({item, item}, source).toStdString());
    require(hasNul ? !batch : batch == root_runner::Batch{{move, move}, source.toStdString()});
}

/// The root runner accepts only what the application writes.
void requireOwnCommand(const QString& text)
{
    const auto command = root_runner::parseCommand(text.toStdString());
    const auto* single = command ? std::get_if<root_runner::SingleMove>(&*command) : nullptr;
    if (!single)
        return;
    const auto parent = single->move.makesFolder ? ParentFolder::create : ParentFolder::mustExist;
    const auto path = [](const std::string& bytes) { return platform::fromUtf8(QByteArrayView(bytes)); };
    require(text == moveCommand(path(single->move.source), path(single->move.destination), parent) +
                        (single->flushesCache ? audioUnitCacheFlush({}) : QString()));
}

} // namespace

/// The source and, from the first NUL on, the destination of a move; also a command, a script and a counter.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = platform::fromUtf8(bytesOf(data, size));
    const qsizetype end = text.indexOf(QChar::Null);
    requireSafeCommands(u'/' + text.first(std::max<qsizetype>(end, 0)), u"/b/"_s + text.sliced(end + 1));
    requireOwnCommand(text);
    static_cast<void>(root_runner::parseBatch({reinterpret_cast<const char*>(data), size}));
    static_cast<void>(platform::parseAdministratorScript(text));
    const auto progress = batchProgress(bytesOf(data, size), 3);
    require(!progress || (*progress >= 0 && *progress <= 1));
    return 0;
}
