#include "model/Json.h"

#include "model/PluginKeyTransfer.h"

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(Json, RejectsInvalidText)
{
    const auto nested = [](int depth) { return QByteArray(depth, '[') + QByteArray(depth, ']'); };
    const std::tuple<const char*, QByteArray, bool> rows[] = {
        {"empty object", "{}", true},
        {"whitespace around", " \r\n\t[1, 2.5e3, null] \n", true},
        {"byte-order mark", "\xEF\xBB\xBF{\"a\":1}", true},
        {"escapes", R"(["\u00e9\ud83d\ude80\/"])", true},
        {"nested", nested(60), true},
        {"nested deeply", nested(70), false},
        {"deep objects", QByteArray("{\"a\":").repeated(100'000) + "1" + QByteArray(100'000, '}'), false},
        {"nothing", "", false},
        {"cut off", R"({"a":[1,2)", false},
        {"trailing text", "{} x", false},
        {"too large a number", "[1e999]", false},
        {"no UTF-8", "[\"\xFF\"]", false},
        {"half a surrogate pair", R"(["\ud83d"])", false},
        {"control character in text", "[\"a\nb\"]", false},
    };
    for (const auto& [name, text, accepted] : rows)
        EXPECT_EQ(parseJson(text).has_value(), accepted) << name;
}

TEST(Json, WritesMembersInOrderAndReadsTheLastOfEqualKeys)
{
    nlohmann::ordered_json written;
    written["z"] = 1;
    written["a"] = "2";
    written["m"] = nlohmann::ordered_json::array();
    EXPECT_EQ(writeJson(written), R"({"z":1,"a":"2","m":[]})");
    QByteArray large = R"({"a":"1")";
    for (int i = 0; i < 50'000; ++i)
        large += ",\"" + QByteArray::number(i) + "\":0";
    const auto json = parseJson(large + R"(,"a":"2"})");
    ASSERT_TRUE(json);
    EXPECT_EQ(JsonObject(*json).text("a"), u"2"_s);
    EXPECT_EQ(json->size(), 50'001U);
    EXPECT_TRUE(parseJson(writeJson({{"k", "a\xFFz"}}))) << "invalid UTF-8 must not make the file unreadable";
}

TEST(Json, DatesRoundTripToTheLastBit)
{
    for (const double seconds : {0.0, 715000000.1, -978307200.0, 1.0 / 3, 774144000.12345672})
        EXPECT_EQ(JsonObject(*parseJson(writeJson({{"d", seconds}}))).date("d").sinceReference, seconds);
    EXPECT_EQ(Date::fromUnix(978307200).sinceReference, 0);
}

TEST(Json, StrictMembers)
{
    const auto json = *parseJson(R"({"t":"\uFEFFx","n":1,"b":true,"l":["a"],"m":[1],"z":null,"u":"0F1E"})");
    const JsonObject object(json);
    EXPECT_TRUE(object.has("t") && !object.has("z") && !object.has("missing"));
    EXPECT_EQ(object.text("t"), u"\uFEFFx"_s);
    EXPECT_EQ(object.texts("l"), QStringList{u"a"_s});
    EXPECT_THROW((void)object.text("n"), JsonError);
    EXPECT_THROW((void)object.text("missing"), JsonError);
    EXPECT_THROW((void)object.boolean("n"), JsonError);
    EXPECT_THROW((void)object.date("b"), JsonError);
    EXPECT_THROW((void)object.texts("t"), JsonError);
    EXPECT_THROW((void)object.texts("m"), JsonError);
    EXPECT_THROW((void)object.uuid("u"), JsonError);
    EXPECT_THROW(JsonObject(nlohmann::json("text")), JsonError);
}

TEST(PluginKeyTransfer, CodedForm)
{
    const PluginKeyTransfer transfer{{u"A|B|VST3"_s, u"Ü\"|CLAP"_s}};
    EXPECT_EQ(transfer.encoded(), R"({"keys":["A|B|VST3","Ü\"|CLAP"]})");
    EXPECT_EQ(PluginKeyTransfer::decoded(transfer.encoded()), transfer);
    EXPECT_THROW((void)PluginKeyTransfer::decoded(""), JsonError);
}

} // namespace orvanlite::test
