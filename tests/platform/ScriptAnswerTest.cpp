#include "platform/ScriptAnswer.h"
#include "platform/posix/ChildScriptRunner.h"
#include "support/Fakes.h"

#include <QFile>

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;
using platform::ScriptErrorDictionary;
using platform::ScriptOutcome;

namespace {

const ScriptErrorDictionary kCancelled{
    {u"NSAppleScriptErrorAppName"_s, u"Orvanlite"_s},
    {u"NSAppleScriptErrorBriefMessage"_s, u"User canceled."_s},
    {u"NSAppleScriptErrorMessage"_s, u"User canceled."_s},
    {u"NSAppleScriptErrorNumber"_s, u"-128"_s},
    {u"NSAppleScriptErrorRange"_s, u"NSRange: {0, 61}"_s},
};

/// Runs the source with a helper of these shell lines.
ScriptOutcome runWith(const QByteArray& lines, const QString& source)
{
    const TempRoot root;
    root.addFile(u"/helper", "#!/bin/sh\n" + lines + '\n');
    QFile::setPermissions(root.at(u"/helper"), QFile::ReadOwner | QFile::ExeOwner);
    platform::ChildScriptRunner runner(root.at(u"/helper"));
    ScriptOutcome outcome;
    const auto keep = [](platform::ScriptRunner* from, QString text, ScriptOutcome* into) -> QCoro::Task<> {
        *into = co_await from->execute(text);
    };
    runTask(keep(&runner, source, &outcome));
    return outcome;
}

} // namespace

TEST(ScriptAnswer, OutcomesSurviveTheWayThroughThePipe)
{
    const struct {
        const char* name;
        ScriptOutcome outcome;
        QByteArray wanted;
    } rows[] = {
        {"nothing came of it", {}, "{}"},
        {"a result without a text", {u""_s, {}}, R"({"result":""})"},
        {"lines, quotes and other scripts",
         {u"a\n\"b\"\\\t\u0001é\U0001F50A"_s, {}},
         "{\"result\":\"a\\n\\\"b\\\"\\\\\\t\\u0001é\U0001F50A\"}"},
        {"an empty error", {{}, ScriptErrorDictionary{}}, R"({"error":{}})"},
        {"an error with all its keys",
         {{}, kCancelled},
         R"({"error":{"NSAppleScriptErrorAppName":"Orvanlite","NSAppleScriptErrorBriefMessage":"User canceled.",)"
         R"("NSAppleScriptErrorMessage":"User canceled.","NSAppleScriptErrorNumber":"-128",)"
         R"("NSAppleScriptErrorRange":"NSRange: {0, 61}"}})"},
        {"both", {u"x"_s, ScriptErrorDictionary{{u"a"_s, u"b"_s}}}, R"({"error":{"a":"b"},"result":"x"})"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const QByteArray answer = encodeScriptAnswer(row.outcome);
        EXPECT_EQ(answer, row.wanted);
        EXPECT_EQ(platform::decodeScriptAnswer(answer), row.outcome);
    }
}

TEST(ScriptAnswer, WhatIsNoAnswerReadsAsNothing)
{
    for (const char* answer :
         {"", "null", "[]", "7", "text", R"({"result":"cut o)", R"({"result":7,"error":"x"})",
          R"({"result":null})", R"({"result":"a"}{"result":"b"})"}) {
        SCOPED_TRACE(answer);
        EXPECT_EQ(platform::decodeScriptAnswer(answer), ScriptOutcome());
    }
    const ScriptOutcome outcome = platform::decodeScriptAnswer(R"({"error":{"Number":-128,"Message":"No"}})");
    EXPECT_EQ(outcome.error, (ScriptErrorDictionary{{u"Message"_s, u"No"_s}}));
}

TEST(ChildScriptRunner, HandsTheSourceToTheHelperAndReadsItsAnswer)
{
    const QByteArray echo = R"sh(source=$(cat); printf '{"result":"%s"}' "$source")sh";
    const QString large(300'000, u'x');
    const ScriptOutcome stopped{
        {},
        platform::scriptError(u"The script was stopped before its end."_s, platform::kScriptGeneralError)};
    const struct {
        const char* name;
        QByteArray helper;
        QString source;
        ScriptOutcome wanted;
    } rows[] = {
        {"result", echo, u"é of 'x'"_s, {u"é of 'x'"_s, {}}},
        {"error",
         R"sh(cat >/dev/null; echo '{"error":{"NSAppleScriptErrorNumber":"-128"}}')sh",
         u"x"_s,
         {{}, ScriptErrorDictionary{{u"NSAppleScriptErrorNumber"_s, u"-128"_s}}}},
        {"more than a pipe holds, both ways", echo, large, {large, {}}},
        {"helper that reads nothing", R"sh(echo '{"result":"done"}')sh", large, {u"done"_s, {}}},
        {"killed behind its answer", R"sh(echo '{"result":"half"}'; kill -9 $$)sh", u"x"_s, stopped},
        {"failed behind its answer", R"sh(echo '{"result":"half"}'; exit 1)sh", u"x"_s, stopped},
        {"says nothing", "cat >/dev/null", u"x"_s, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(runWith(row.helper, row.source), row.wanted);
    }
    // Not even started: it would give a result.
    const QString refused = uR"(do shell script "rm 'a\\b'" with administrator privileges)"_s;
    EXPECT_EQ(runWith(echo, refused).error.value_or(ScriptErrorDictionary())[u"NSAppleScriptErrorNumber"_s],
              u"-2741"_s);
    platform::ChildScriptRunner missing(u"/nonexistent/helper"_s);
    ScriptOutcome outcome{u"untouched"_s, {}};
    const auto keep = [](platform::ScriptRunner* from, ScriptOutcome* into) -> QCoro::Task<> {
        *into = co_await from->execute(u"x"_s);
    };
    runTask(keep(&missing, &outcome));
    EXPECT_EQ(outcome, ScriptOutcome());
}

} // namespace orvanlite::test
