#include "model/AudioPlugin.h"

#include "model/ConsolidatedPlugin.h"
#include "model/Json.h"
#include "model/PluginLocations.h"
#include "model/Uuid.h"
#include "platform/SystemLayout.h"

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

namespace {

constexpr double kDay = 86400.0;
const QByteArray kId = "0F1E2D3C-4B5A-4678-9ABC-DEF012345678";

const AudioPlugin kFull{*parseUuid(kId),     u"Höhe|\"2\""_s,     u"Maker"_s, PluginFormat::aax,
                        u"/a/b.aaxplugin"_s, u"/c/b.aaxplugin"_s, false,      u"1.0"_s,
                        u"com.maker.b"_s,    Date{715000000.0625}};

const QByteArray kFullRecord =
    R"({"id":")" + kId +
    R"(","name":"Höhe|\"2\"","manufacturer":"Maker","format":"AAX","originalPath":"/a/b.aaxplugin",)"
    R"("currentPath":"/c/b.aaxplugin","isEnabled":false,"version":"1.0","bundleIdentifier":"com.maker.b",)"
    R"("lastUsed":715000000.0625})";

} // namespace

TEST(AudioPlugin, LastUsedText)
{
    const std::pair<double, const char*> rows[] = {
        {kDay - 1, "Today"},           {-kDay + 1, "Today"},        {kDay, "Yesterday"},
        {2 * kDay, "2 days ago"},      {-1 * kDay, "-1 days ago"},  {-40 * kDay, "-40 days ago"},
        {7 * kDay, "1 weeks ago"},     {29 * kDay, "4 weeks ago"},  {30 * kDay, "1 months ago"},
        {364 * kDay, "12 months ago"}, {365 * kDay, "1 years ago"},
    };
    const Date now = Date::fromUnix(1'700'000'000.5);
    AudioPlugin plugin;
    EXPECT_EQ(plugin.lastUsedValue(now), u"Unknown"_s);
    for (const auto& [age, text] : rows) {
        SCOPED_TRACE(age / kDay);
        plugin.lastUsed = Date::fromUnix(now.unixTime() - age);
        EXPECT_EQ(plugin.lastUsedValue(now), QString::fromLatin1(text));
    }
}

TEST(AudioPlugin, JsonForm)
{
    EXPECT_EQ(writeJson(toJson(kFull)), kFullRecord);
    EXPECT_EQ(audioPluginFromJson(*parseJson(kFullRecord)), kFull);

    AudioPlugin plain = kFull;
    plain.version.reset();
    plain.bundleIdentifier.reset();
    plain.lastUsed.reset();
    const auto json = toJson(plain);
    EXPECT_EQ(json.size(), 7U) << "absent fields are left out";
    EXPECT_EQ(audioPluginFromJson(json), plain);
    for (const auto& [key, value] : json.items()) {
        auto invalid = json;
        invalid[key] = nullptr;
        EXPECT_THROW((void)audioPluginFromJson(invalid), JsonError) << key;
    }
}

TEST(PluginFormat, RawValuesAreExactAndNobodyHasNoFolder)
{
    auto layout = platform::SystemLayout::sandbox(u"/box"_s);
    const QString components = u"/Library/Audio/Plug-Ins/Components"_s;
    EXPECT_EQ(PluginLocations(layout).systemPaths(PluginFormat::au),
              (QStringList{u"/box"_s + components, u"/box/Users/tester"_s + components}));
    layout.home = u"/"_s;
    EXPECT_EQ(PluginLocations(layout).systemPaths(PluginFormat::au), QStringList(u"/box"_s + components));
    EXPECT_EQ(fromRawValue<PluginFormat>(u"Audio Units"), PluginFormat::au);
    EXPECT_EQ(fromRawValue<PluginFormat>(u"vst3"), std::nullopt);
    EXPECT_EQ(pluginKey(u"A|B"_s, PluginFormat::au), u"A|B|Audio Units"_s);
    EXPECT_EQ((FormatVariant{QUuid(), PluginFormat::wavesBundle, true, u""_s}).badgeLabel(), u""_s);
}

} // namespace orvanlite::test
