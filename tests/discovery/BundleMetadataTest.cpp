#include "discovery/BundleMetadata.h"

#include "support/Fakes.h"
#include "support/PropertyListWriter.h"

#include <QFile>

#include <gtest/gtest.h>

namespace orvanlite::test {
namespace {

using namespace Qt::StringLiterals;
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
    struct Row {
        const char* name;
        QString wanted;
        QByteArray plist;
        QString extension = u"vst3"_s;
        QByteArray clapJson = {};
    };
    const auto clap = [](const char* name, const QString& wanted, const QByteArray& json,
                         const QByteArray& plist = {}) {
        return Row{name, wanted, plist, u"clap"_s, json};
    };
    const QByteArray acmeJson = R"({"plugin": {"vendor": "Acme"}})";
    QByteArray wide;
    for (int i = 0; i < 50'000; ++i)
        wide += ", \"" + QByteArray::number(i) + "\": 0.5";
    const Row rows[] = {
        {"component", u"Maker"_s, withComponent(u"Maker: Foo"_s)},
        {"component in a binary list", u"Maker"_s, binaryInfoPlist({{u"x"_s, u"\u00E9"_s}}, u"Maker: Foo"_s)},
        {"component of Waves", u"Waves Audio"_s, withComponent(u"Waves: Foo"_s)},
        {"component of waves in lower case", u"waves"_s, withComponent(u"waves: Foo"_s)},
        {"blanks and tabs", u"Ma ker"_s, withComponent(u" \tMa ker\t : Foo"_s)},
        {"other white space stays", u"\nMaker\u00A0"_s, withComponent(u"\nMaker\u00A0: Foo"_s)},
        {"only blanks are an answer", u""_s, withComponent(u"  :Foo"_s)},
        {"first colon", u"Maker"_s, withComponent(u"Maker:Foo:Bar"_s)},
        {"no colon", u"Other"_s, withComponent(u"Foo"_s)},
        {"nothing before the colon", u"Other"_s, withComponent(u":Foo"_s)},
        {"nothing behind the colon", u"Other"_s, withComponent(u"Maker:"_s)},
        {"empty name", u"Other"_s, withComponent(u""_s)},
        {"identifier", u"Acme"_s, withIdentifier(u"com.acme.reverb"_s)},
        {"identifier with a capital", u"ACMe"_s, withIdentifier(u"com.ACMe.reverb"_s)},
        {"empty pieces", u"Acme"_s, withIdentifier(u"..com..acme."_s)},
        {"generic piece", u"Vst3"_s, withIdentifier(u"com.vst3.x"_s)},
        {"AIR", u"AIR Music Technology"_s, withIdentifier(u"com.WIZOO.foo"_s)},
        {"Waves", u"Waves Audio"_s, withIdentifier(u"com.Waves.foo"_s)},
        {"Waves Audio", u"Waves Audio"_s, withIdentifier(u"com.wavesaudio.foo"_s)},
        {"u-he", u"u-he"_s, withIdentifier(u"com.U-HE.foo"_s)},
        {"sharp s", u"SS-a"_s, withIdentifier(u"com.\u00DF-a.x"_s)},
        {"beyond the basic plane", u"\U00010400a"_s, withIdentifier(u"com.\U00010428a.x"_s)},
        {"one piece", u""_s, withIdentifier(u"acme"_s)},
        {"dots only", u""_s, withIdentifier(u"..."_s)},
        {"damaged list", u""_s, "<plist><dict>"},
        clap("CLAP", u"Acme"_s, acmeJson),
        clap("CLAP with one piece", u"Acme"_s, acmeJson, withIdentifier(u"foo"_s)),
        clap("CLAP with an identifier", u"Other"_s, acmeJson, withIdentifier(u"com.other"_s)),
        clap("CLAP without a file", u""_s, {}),
        {"not a CLAP", u""_s, {}, u"vst3"_s, acmeJson},
        clap("damaged", u""_s, acmeJson.chopped(1)),
        clap("root is a list", u""_s, "[" + acmeJson + "]"),
        clap("vendor is a number", u""_s, R"({"plugin": {"vendor": 1}})"),
        clap("vendor in a list", u""_s, R"({"plugin": ["vendor", "x"]})"),
        clap("vendor is deeper", u""_s, R"({"plugin": {"vendor": {"vendor": "x"}}})"),
        clap("vendor of another", u""_s, R"({"plugin": {}, "other": {"vendor": "x"}})"),
        clap("last of equal keys", u"B"_s, R"({"plugin": {"vendor": "A", "vendor": "B"}})"),
        clap("last vendor is none", u""_s, R"({"plugin": {"vendor": "A", "vendor": null}})"),
        clap("last plugin is none", u""_s, R"({"plugin": {"vendor": "A"}, "plugin": {}})"),
        clap("with marks", u"\uFEFFA"_s, "\xEF\xBB\xBF{\"plugin\": {\"vendor\": \"\xEF\xBB\xBF\u0041\"}}"),
        clap("with more behind it", u""_s, acmeJson + "{}"),
        clap("deep and wide", u"Acme"_s,
             acmeJson.chopped(1) + ", \"x\": " + QByteArray("[").repeated(100'000) +
                 QByteArray("]").repeated(100'000) + wide + "}"),
        clap("too large to be one", u""_s, acmeJson + QByteArray(4 << 20, ' ')),
        {"list too large to be one", u""_s, withIdentifier(u"com.acme.x"_s) + QByteArray(4 << 20, ' ')},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TempRoot root;
        const platform::FreedesktopFileManager files;
        const QString bundle = u"/Foo."_s + row.extension;
        root.addBundle(bundle, row.plist);
        if (!row.clapJson.isEmpty())
            root.addFile(bundle + u"/clap.json"_s, row.clapJson);
        EXPECT_EQ(BundleMetadata(files, root.at(bundle)).extractManufacturer(), row.wanted);
    }
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
    root.addFolder(u"/Empty.vst3/Contents/MacOS");
    root.addFolder(u"/Dangling.vst3/Contents/MacOS");
    QFile::link(u"nowhere"_s, root.at(u"/Dangling.vst3/Contents/MacOS/x"));
    root.addFile(u"/Plain.vst3", "code");
    for (const QString& none : {u"Empty"_s, u"Dangling"_s, u"Plain"_s})
        EXPECT_EQ(lastUsed(none), std::nullopt) << none.toStdString();
}

} // namespace
} // namespace orvanlite::test
