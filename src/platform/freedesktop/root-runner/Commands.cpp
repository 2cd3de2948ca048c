#include "platform/freedesktop/root-runner/Commands.h"

namespace orvanlite::root_runner {

namespace {

constexpr std::string_view kFlush =
    " && rm -rf ~/Library/Caches/AudioUnitCache/* /Library/Caches/com.apple.audiounits.cache 2>/dev/null"
    " && killall -9 AudioComponentRegistrar 2>/dev/null; true";

/// Consumes a text from its start. A failed match consumes nothing or invalidates the whole text.
class Reader {
public:
    explicit Reader(std::string_view text)
        : m_left(text)
    {}

    [[nodiscard]] bool isAtEnd() const { return m_left.empty(); }

    bool take(std::string_view literal)
    {
        if (!m_left.starts_with(literal))
            return false;
        m_left.remove_prefix(literal.size());
        return true;
    }

    bool takeWord(std::string& word)
    {
        word.clear();
        if (!take("'"))
            return false;
        while (true) {
            const auto quote = m_left.find('\'');
            if (quote == std::string_view::npos)
                return false;
            word += m_left.substr(0, quote);
            m_left.remove_prefix(quote + 1);
            if (!take(R"("'"')"))
                return word.find('\0') == std::string::npos; // system calls would stop at a NUL
            word += '\'';
        }
    }

    bool takeMove(Move& move)
    {
        std::string folder;
        move.makesFolder = take("mkdir -p ");
        if (move.makesFolder && !(takeWord(folder) && take(" && ")))
            return false;
        if (!(take("mv ") && takeWord(move.source) && take(" ") && takeWord(move.destination)))
            return false;
        return !move.makesFolder || folder == move.destination.substr(0, move.destination.rfind('/'));
    }

private:
    std::string_view m_left;
};

std::optional<Removal> parseRemoval(std::string_view text)
{
    Reader reader(text);
    Removal removal;
    while (!reader.isAtEnd()) {
        if (!removal.paths.empty() && !reader.take(" && "))
            return std::nullopt;
        if (!(reader.take("rm -rf ") && reader.takeWord(removal.paths.emplace_back())))
            return std::nullopt;
    }
    return removal;
}

std::optional<SingleMove> parseSingleMove(std::string_view text)
{
    Reader reader(text);
    SingleMove single;
    if (!reader.takeMove(single.move))
        return std::nullopt;
    single.flushesCache = reader.take(kFlush);
    return reader.isAtEnd() ? std::optional(single) : std::nullopt;
}

std::optional<ScriptCall> parseScriptCall(std::string_view text)
{
    Reader reader(text);
    ScriptCall call;
    std::string called;
    if (!(reader.take("chmod +x ") && reader.takeWord(call.script) && reader.take(" && ") &&
          reader.takeWord(called) && reader.isAtEnd() && called == call.script))
        return std::nullopt;
    return call;
}

} // namespace

std::optional<Command> parseCommand(std::string_view text)
{
    if (const auto removal = parseRemoval(text))
        return *removal;
    if (const auto single = parseSingleMove(text))
        return *single;
    if (const auto call = parseScriptCall(text))
        return *call;
    return std::nullopt;
}

std::optional<Batch> parseBatch(std::string_view text)
{
    Reader reader(text);
    Batch batch;
    if (!reader.take("#!/bin/sh\nn=0"))
        return std::nullopt;
    while (!reader.isAtEnd()) {
        Move& move = batch.moves.emplace_back();
        std::string counter;
        if (!(reader.take("\n") && reader.takeMove(move) && move.makesFolder &&
              reader.take("\nn=$((n+1)) && printf '%d' $n > ") && reader.takeWord(counter)))
            return std::nullopt;
        if (batch.moves.size() > 1 && counter != batch.counter)
            return std::nullopt;
        batch.counter = counter;
    }
    return batch;
}

} // namespace orvanlite::root_runner
