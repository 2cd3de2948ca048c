#include "discovery/BundleMetadata.h"

#include "support/Fakes.h"

#include <QFile>

namespace orvanlite::test {
namespace {

using enum BundleMetadata::InfoKey;

QByteArray withIdentifier(const QString& identifier)
{
    return infoPlist({{u"CFBundleIdentifier"_s, identifier}});
}

QByteArray withComponent(const QString& name, const QString& identifier = u"com.other.x"_s)
{
    return infoPlist({{u"CFBundleIdentifier"_s, identifier}},
                     "<key>AudioComponents</key><array><dict><key>name</key><string>" + name.toUtf8() +
                         "</string></dict></array>");
}

TEST(BundleMetadataTest, Manufacturer)
{
    const QByteArray acmeJson = R"({"plugin": {"vendor": "Acme"}})";
    const QByteArray deep = QByteArray("[").repeated(100'000) + QByteArray("]").repeated(100'000);
    QByteArray wide;
    for (int i = 0; i < 50'000; ++i)
        wide += ", \"" + QByteArray::number(i) + "\": 0.5";
    // Expected manufacturer, property list and clap.json; a bundle with the latter is a CLAP.
    const std::tuple<const char*, QString, QByteArray, QByteArray> rows[] = {
        {"component", u"Maker"_s, withComponent(u"Maker: Foo"_s), {}},
        {"component of Waves", u"Waves Audio"_s, withComponent(u"Waves: Foo"_s), {}},
        {"component of waves in lower case", u"waves"_s, withComponent(u"waves: Foo"_s), {}},
        {"spaces and tabs go", u"\nMa ker\u00A0"_s, withComponent(u" \t\nMa ker\u00A0\t : Foo"_s), {}},
        {"only spaces are an answer", u""_s, withComponent(u"  :Foo"_s), {}},
        {"first colon", u"Maker"_s, withComponent(u"Maker:Foo:Bar"_s), {}},
        {"no colon", u"Other"_s, withComponent(u"Foo"_s), {}},
        {"nothing before the colon", u"Other"_s, withComponent(u":Foo"_s), {}},
        {"nothing behind the colon", u"Other"_s, withComponent(u"Maker:"_s), {}},
        {"empty name", u"Other"_s, withComponent(u""_s), {}},
        {"identifier with a capital", u"ACMe"_s, withIdentifier(u"com.ACMe.reverb"_s), {}},
        {"empty pieces", u"Acme"_s, withIdentifier(u"..com..acme."_s), {}},
        {"generic piece", u"Vst3"_s, withIdentifier(u"com.vst3.x"_s), {}},
        {"AIR", u"AIR Music Technology"_s, withIdentifier(u"com.WIZOO.foo"_s), {}},
        {"Waves", u"Waves Audio"_s, withIdentifier(u"com.Waves.foo"_s), {}},
        {"Waves Audio", u"Waves Audio"_s, withIdentifier(u"com.wavesaudio.foo"_s), {}},
        {"u-he", u"u-he"_s, withIdentifier(u"com.U-HE.foo"_s), {}},
        {"sharp s", u"SS-a"_s, withIdentifier(u"com.\u00DF-a.x"_s), {}},
        {"beyond the basic plane", u"\U00010400a"_s, withIdentifier(u"com.\U00010428a.x"_s), {}},
        {"one piece", u""_s, withIdentifier(u"..acme."_s), {}},
        {"damaged list", u""_s, "<plist><dict>", {}},
        {"list over the size limit", u""_s, withIdentifier(u"com.acme.x"_s) + QByteArray(4 << 20, ' '), {}},
        {"CLAP with one piece", u"Acme"_s, withIdentifier(u"foo"_s), acmeJson},
        {"CLAP with an identifier", u"Other"_s, withIdentifier(u"com.other"_s), acmeJson},
        {"damaged", u""_s, {}, acmeJson.chopped(1)},
        {"root is a list", u""_s, {}, "[" + acmeJson + "]"},
        {"manufacturer is a number", u""_s, {}, R"({"plugin": {"vendor": 1}})"},
        {"manufacturer in a list", u""_s, {}, R"({"plugin": ["vendor", "x"]})"},
        {"manufacturer is deeper", u""_s, {}, R"({"plugin": {"vendor": {"vendor": "x"}}})"},
        {"manufacturer of another", u""_s, {}, R"({"plugin": {}, "other": {"vendor": "x"}})"},
        {"last of equal keys", u"B"_s, {}, R"({"plugin": {"vendor": "A", "vendor": "B"}})"},
        {"last manufacturer is null", u""_s, {}, R"({"plugin": {"vendor": "A", "vendor": null}})"},
        {"last plugin is empty", u""_s, {}, R"({"plugin": {"vendor": "A"}, "plugin": {}})"},
        {"marks", u"\uFEFFA"_s, {}, "\xEF\xBB\xBF{\"plugin\": {\"vendor\": \"\xEF\xBB\xBF\u0041\"}}"},
        {"trailing text", u""_s, {}, acmeJson + "{}"},
        {"deep and wide", u"Acme"_s, {}, acmeJson.chopped(1) + ", \"x\": " + deep + wide + "}"},
        {"CLAP over the size limit", u""_s, {}, acmeJson + QByteArray(4 << 20, ' ')},
    };
    TempRoot root;
    const platform::FreedesktopFileManager files;
    int number = 0;
    for (const auto& [name, wanted, plist, json] : rows) {
        SCOPED_TRACE(name);
        const QString bundle = u"/%1.%2"_s.arg(++number).arg(json.isEmpty() ? u"vst3"_s : u"clap"_s);
        root.addBundle(bundle, plist);
        if (!json.isEmpty())
            root.addFile(bundle + u"/clap.json"_s, json);
        EXPECT_EQ(BundleMetadata(files, root.at(bundle)).extractManufacturer(), wanted);
    }
    root.addBundle(u"/Other.vst3");
    root.addFile(u"/Other.vst3/clap.json", acmeJson);
    EXPECT_EQ(BundleMetadata(files, root.at(u"/Other.vst3")).extractManufacturer(), u""_s) << "not a CLAP";
}

TEST(BundleMetadataTest, InfoTextsAreTextsOrAbsent)
{
    TempRoot root;
    const platform::FreedesktopFileManager files;
    const auto info = [&](const QByteArray& plist) {
        root.addBundle(u"/Foo.vst3", plist);
        const BundleMetadata metadata(files, root.at(u"/Foo.vst3"));
        return std::pair(metadata.extractInfoFromBundle(version), metadata.extractInfoFromBundle(identifier));
    };
    using Pair = std::pair<std::optional<QString>, std::optional<QString>>;
    const auto key = u"CFBundleShortVersionString"_s;
    EXPECT_EQ(info(infoPlist({{key, u"1.0"_s}, {u"CFBundleIdentifier"_s, u"a.b"_s}})),
              Pair(u"1.0"_s, u"a.b"_s));
    EXPECT_EQ(info(infoPlist({{key, u""_s}, {u"CFBundleVersion"_s, u"9"_s}})), Pair(u""_s, std::nullopt));
    EXPECT_EQ(info(infoPlist({}, "<key>CFBundleShortVersionString</key><real>1.0</real>")), Pair());
    root.addFile(u"/Plain.vst", "code");
    EXPECT_EQ(BundleMetadata(files, root.at(u"/Plain.vst")).extractManufacturer(), u""_s);
}

TEST(BundleMetadataTest, LastUsedIsTheAccessTimeOfTheExecutable)
{
    TempRoot root;
    const platform::FreedesktopFileManager files;
    const auto addFile = [&](const QString& path, qint64 accessed) {
        root.addFile(path, "code");
        QFile file(root.at(path));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::fromMSecsSinceEpoch(accessed * 1000 + 999), QFileDevice::FileAccessTime);
        file.setFileTime(QDateTime::fromSecsSinceEpoch(1'111'111'111), QFileDevice::FileModificationTime);
    };
    const auto lastUsed = [&](const QString& name) {
        return BundleMetadata(files, root.at(u"/"_s + name + u".vst3"_s)).extractLastUsed(name);
    };
    addFile(u"/A.vst3/Contents/MacOS/A"_s, 1'600'000'000);
    addFile(u"/A.vst3/Contents/MacOS/B"_s, 1'500'000'000);
    EXPECT_EQ(lastUsed(u"A"_s), Date::fromUnix(1'600'000'000));
    addFile(u"/Other.vst3/Contents/MacOS/.hidden name"_s, 1'600'000'001);
    EXPECT_EQ(lastUsed(u"Other"_s), Date::fromUnix(1'600'000'001));
    for (const QStringView folder : {u"/Empty.vst3/Contents/MacOS", u"/Dangling.vst3/Contents/MacOS"})
        root.addFolder(folder);
    QFile::link(u"nowhere"_s, root.at(u"/Dangling.vst3/Contents/MacOS/x"));
    root.addFile(u"/Plain.vst3", "code");
    for (const QString& none : {u"Empty"_s, u"Dangling"_s, u"Plain"_s})
        EXPECT_EQ(lastUsed(none), std::nullopt) << none.toStdString();
}

} // namespace
} // namespace orvanlite::test
