#include "platform/ScriptAnswer.h"
#include "platform/AdministratorScript.h"
#include "platform/posix/ChildScriptRunner.h"
#include "support/Fakes.h"

namespace orvanlite::test {

using platform::ScriptErrorDictionary;
using platform::ScriptOutcome;

namespace {

/// The outcome of a source that is run by a helper of these shell lines.
ScriptOutcome runWith(const QByteArray& lines, const QString& source)
{
    const TempRoot root;
    if (!lines.isEmpty())
        root.addScript(u"/helper", lines + '\n');
    platform::ChildScriptRunner runner(root.at(u"/helper"));
    return resultOf(runner.execute(source, nullptr));
}

} // namespace

TEST(AdministratorScript, AcceptsOneSentenceWithoutEscapes)
{
    const QString nul(1, QChar::Null);
    // The command, the number of the error, or 0 for another script.
    const std::pair<QString, std::variant<QString, int>> rows[] = {
        {u"do shell script \"mv 'a b' 'ü'\" with administrator privileges"_s, u"mv 'a b' 'ü'"_s},
        {u"\n do shell script \"1\n2\" with administrator privileges \n"_s, u"1\n2"_s},
        {uR"(do shell script "" with administrator privileges)"_s, u""_s},
        {uR"(do shell script "a\"b" with administrator privileges)"_s, -2741},
        {uR"(do shell script "rm -rf 'a\\b'" with administrator privileges)"_s, -2741},
        {uR"(do shell script "a\)"_s, -2741},
        {uR"(do shell script "mv 'it'"'"'s' 'x'" with administrator privileges)"_s, -2741},
        {uR"(do shell script "rm 'a" & (beep) & "b'" with administrator privileges)"_s, -2741},
        {uR"(do shell script "a"  with administrator privileges)"_s, -2741},
        {uR"(do shell script "a with administrator privileges)"_s, -2741},
        {u"do shell script \"a"_s + nul + u"b\" with administrator privileges"_s, -2741},
        {uR"(do shell script "a")"_s, 0},
        {uR"(tell application "System Events" to keystroke "\"")"_s, 0},
        {QString(), 0},
    };
    for (const auto& [source, wanted] : rows) {
        SCOPED_TRACE(source.toStdString());
        const auto parsed = platform::parseAdministratorScript(source);
        std::variant<QString, int> found = 0;
        if (const auto* command = std::get_if<QString>(&parsed)) {
            found = *command;
        } else if (const auto* error = std::get_if<ScriptErrorDictionary>(&parsed)) {
            found = error->value(u"NSAppleScriptErrorNumber"_s).toInt();
            EXPECT_FALSE(error->value(u"NSAppleScriptErrorMessage"_s).isEmpty());
        }
        EXPECT_EQ(found, wanted);
    }
}

TEST(ScriptRunner, DescribesTheWholeDictionary)
{
    EXPECT_EQ(platform::description({}), u"{\n}"_s);
    EXPECT_EQ(platform::description({{u"NSAppleScriptErrorNumber"_s, u"-128"_s},
                                     {u"NSAppleScriptErrorMessage"_s, u"mv: \"a\\b\":\nno such file"_s},
                                     {u"Empty"_s, u""_s},
                                     {u"Status"_s, u"1"_s}}),
              u"{\n"
              "    Empty = \"\";\n"
              "    NSAppleScriptErrorMessage = \"mv: \\\"a\\\\b\\\":\\nno such file\";\n"
              "    NSAppleScriptErrorNumber = \"-128\";\n"
              "    Status = 1;\n"
              "}"_s);
}

TEST(ScriptAnswer, DecodesWhatItEncodes)
{
    const ScriptOutcome rows[] = {
        {},
        {u""_s, {}},
        {u"a\n\"b\"\\\t\u0001é\U0001F50A"_s, {}},
        {{}, ScriptErrorDictionary{}},
        {u"x"_s, platform::scriptError(u"User canceled."_s, -128)},
    };
    for (const ScriptOutcome& outcome : rows) {
        const QByteArray answer = encodeScriptAnswer(outcome);
        EXPECT_EQ(platform::decodeScriptAnswer(answer), outcome) << answer.constData();
    }
    EXPECT_EQ(platform::encodeScriptAnswer({u"a\n"_s, {}}), R"({"result":"a\n"})");
}

TEST(ScriptAnswer, IgnoresInvalidAnswers)
{
    for (const char* answer :
         {"", "null", "[]", "7", "text", R"({"result":"cut o)", R"({"result":7,"error":"x"})",
          R"({"result":null})", R"({"result":"a"}{"result":"b"})"})
        EXPECT_EQ(platform::decodeScriptAnswer(answer), ScriptOutcome()) << answer;
    const ScriptOutcome outcome = platform::decodeScriptAnswer(R"({"error":{"Number":-128,"Message":"No"}})");
    EXPECT_EQ(outcome.error, (ScriptErrorDictionary{{u"Message"_s, u"No"_s}}));
}

TEST(ChildScriptRunner, PassesTheSourceToTheHelperAndReadsItsAnswer)
{
    const QByteArray echo = R"sh(source=$(cat); printf '{"result":"%s"}' "$source")sh";
    const QString large(300'000, u'x');
    const ScriptOutcome stopped{
        {},
        platform::scriptError(u"The script was stopped before its end."_s, platform::kScriptGeneralError)};
    const std::tuple<QByteArray, QString, ScriptOutcome> rows[] = {
        {echo, u"é of 'x'"_s, {u"é of 'x'"_s, {}}},
        {R"sh(cat >/dev/null; echo '{"error":{"NSAppleScriptErrorNumber":"-128"}}')sh",
         u"x"_s,
         {{}, ScriptErrorDictionary{{u"NSAppleScriptErrorNumber"_s, u"-128"_s}}}},
        {echo, large, {large, {}}}, // larger than the buffer of a pipe, in both directions
        {R"sh(echo '{"result":"done"}')sh", large, {u"done"_s, {}}},
        {R"sh(echo '{"result":"half"}'; kill -9 $$)sh", u"x"_s, stopped},
        {R"sh(echo '{"result":"half"}'; exit 1)sh", u"x"_s, stopped},
        {"cat >/dev/null", u"x"_s, {}},
        {"", u"x"_s, {}}, // no helper
    };
    for (const auto& [helper, source, wanted] : rows)
        EXPECT_EQ(runWith(helper, source), wanted) << helper.constData();
    // The helper is not started, otherwise there would be a result.
    const QString refused = uR"(do shell script "rm 'a\\b'" with administrator privileges)"_s;
    EXPECT_EQ(runWith(echo, refused).error.value_or(ScriptErrorDictionary())[u"NSAppleScriptErrorNumber"_s],
              u"-2741"_s);
}

} // namespace orvanlite::test
