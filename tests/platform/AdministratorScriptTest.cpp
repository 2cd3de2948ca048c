#include "platform/AdministratorScript.h"

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;
using namespace platform;

TEST(AdministratorScript, TakesOneSentenceWithoutEscapes)
{
    const QString nul(1, QChar::Null);
    const struct {
        QString source;
        std::variant<QString, int> wanted; // the command or the error's number, 0 for another script
    } rows[] = {
        {u"do shell script \"mv 'a b' 'ü'\" with administrator privileges"_s, u"mv 'a b' 'ü'"_s},
        {u"\n do shell script \"1\n2\" with administrator privileges \n"_s, u"1\n2"_s},
        {uR"(do shell script "" with administrator privileges)"_s, u""_s},
        {uR"(do shell script "a\"b" with administrator privileges)"_s, -2741},
        {uR"(do shell script "rm -rf 'a\\b'" with administrator privileges)"_s, -2741},
        {uR"(do shell script "a\nb" with administrator privileges)"_s, -2741},
        {uR"(do shell script "a\)"_s, -2741},
        {uR"(do shell script "mv 'it'"'"'s' 'x'" with administrator privileges)"_s, -2741},
        {uR"(do shell script "rm 'a" & (beep) & "b'" with administrator privileges)"_s, -2741},
        {uR"(do shell script "a"  with administrator privileges)"_s, -2741},
        {uR"(do shell script "a" with administrator privileges and more)"_s, -2741},
        {uR"(do shell script "a with administrator privileges)"_s, -2741},
        {u"do shell script \"a"_s + nul + u"b\" with administrator privileges"_s, -2741},
        {uR"(do shell script "a")"_s, 0},
        {uR"(tell application "System Events" to keystroke "\"")"_s, 0},
        {QString(), 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.source.toStdString());
        const auto parsed = parseAdministratorScript(row.source);
        if (const auto* command = std::get_if<QString>(&parsed)) {
            EXPECT_EQ(row.wanted, (std::variant<QString, int>(*command)));
        } else if (const auto* error = std::get_if<ScriptErrorDictionary>(&parsed)) {
            EXPECT_EQ(row.wanted,
                      (std::variant<QString, int>(error->value(u"NSAppleScriptErrorNumber"_s).toInt())));
            EXPECT_FALSE(error->value(u"NSAppleScriptErrorMessage"_s).isEmpty());
        } else {
            EXPECT_EQ(row.wanted, (std::variant<QString, int>(0)));
        }
    }
}

TEST(ScriptRunner, DescribesTheWholeDictionary)
{
    EXPECT_EQ(description({}), u"{\n}"_s);
    EXPECT_EQ(description({{u"NSAppleScriptErrorNumber"_s, u"-128"_s},
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

} // namespace orvanlite::test
