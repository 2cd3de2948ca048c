#include "platform/PropertyList.h"

#include "support/PropertyListWriter.h"
#include "support/TempRoot.h"

#include <QStringConverter>

#include <array>
#include <random>

namespace orvanlite::test {
namespace {

using platform::PropertyListField;
using platform::PropertyListTexts;
using platform::readPropertyList;

using Text = std::optional<QString>;

constexpr std::array kFields{
    PropertyListField{"version"_L1},
    PropertyListField{"id"_L1},
    PropertyListField{"parts"_L1, "name"_L1},
};

/// The three answers as one text; "-" for an absent one, "nothing" for an invalid list.
QString answers(const QByteArray& data)
{
    const auto texts = readPropertyList(data, kFields);
    if (!texts)
        return u"nothing"_s;
    QStringList shown;
    for (const Text& text : *texts)
        shown.append(text ? u'[' + *text + u']' : u"-"_s);
    return shown.join(u' ');
}

struct Case {
    const char* name;
    QByteArray data;
    QString wanted;
};

/// Lists in the usual format are read by a fast parser. With a comment after the root, the full parser reads
/// them.
const QByteArray kFullParser = "<!---->";

void expectAll(const std::vector<Case>& cases)
{
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(answers(each.data), each.wanted);
        const QByteArray other = each.data.startsWith("bplist") ? each.data : each.data + kFullParser;
        EXPECT_EQ(answers(other), each.wanted);
    }
}

QByteArray inRoot(const QByteArray& members)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)" + members +
           "</dict></plist>";
}

TEST(PropertyListXml, Answers)
{
    const QByteArray id = "<key>id</key><string>i</string>";
    expectAll({
        {"typical",
         infoPlist({{u"version"_s, u"1.2"_s}, {u"other"_s, u"x"_s}, {u"id"_s, u"a & b"_s}},
                   "<key>parts</key><array><dict><key>name</key><string>A: B</string></dict></array>"),
         u"[1.2] [a & b] [A: B]"_s},
        {"no wrapper", "<dict>" + id + "</dict>", u"- [i] -"_s},
        {"empty root", "<plist><dict/></plist>", u"- - -"_s},
        {"empty text, whitespace is kept",
         inRoot("<key>version</key><string/><key>id</key><string> \n i\t</string>"), u"[] [ \n i\t] -"_s},
        {"other types", inRoot("<key>version</key><integer>1</integer><key>id</key><dict/>"), u"- - -"_s},
        {"deeper keys are others",
         inRoot("<key>x</key><dict><key>id</key><string>no</string></dict>"
                "<key>y</key><array><dict><key>id</key><string>no</string></dict></array>"),
         u"- - -"_s},
        {"last of equal keys", inRoot(id + "<key>id</key><string>j</string>"), u"- [j] -"_s},
        {"last of equal keys, other type", inRoot(id + "<key>id</key><false/>"), u"- - -"_s},
        {"all other types",
         inRoot("<key>a</key><array><real>1.5</real><real>-.5E+3</real><real>+Infinity</real>"
                "<integer> -7\n</integer><integer>0xFf</integer></array>"
                "<key>b</key><date>2001-01-01T00:00:00Z</date><key>c</key><data>AAAA</data>"),
         u"- - -"_s},
        {"CDATA, references, comments",
         inRoot(
             "<!-- <key> --><key>i<![CDATA[d]]></key><string>&lt;<![CDATA[<&>]]>&#x41;&#66;<!-- c -->&quot;</string>"),
         u"- [<<&>AB\"] -"_s},
        {"processing instruction", inRoot("<?x y?>" + id) + "<?x y?>\n", u"- [i] -"_s},
        {"byte order mark", "\xEF\xBB\xBF" + inRoot(id), u"- [i] -"_s},
        {"byte order mark and combining accent in a text",
         inRoot("<key>id</key><string>\xEF\xBB\xBF"
                "e\xCC\x81</string>"),
         u"- [\uFEFFe\u0301] -"_s},
        {"Latin-1 declared",
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><dict><key>id</key><string>\xE9</string></dict>",
         u"- [\u00E9] -"_s},
        {"unknown encoding", "<?xml version=\"1.0\" encoding=\"klingon\"?><dict>" + id + "</dict>",
         u"nothing"_s},
        {"unused own entity", "<!DOCTYPE plist [<!ENTITY e \"x\">]><plist><dict>" + id + "</dict></plist>",
         u"- [i] -"_s},
    });
}

TEST(PropertyListXml, TextsInTheFirstDictionary)
{
    const auto key = [](const QByteArray& value) { return "<key>parts</key>" + value; };
    const auto parts = [&key](const QByteArray& value) {
        return inRoot(key("<array>" + value + "</array>"));
    };
    const QByteArray name = "<key>name</key><string>";
    const QByteArray a = "<dict>" + name + "A</string></dict>";
    const QByteArray b = "<dict>" + name + "B</string></dict>";
    expectAll({
        {"only the first", parts(a + b), u"- - [A]"_s},
        {"first without the key", parts("<dict/>" + a), u"- - -"_s},
        {"another member first", parts("<true/>" + a), u"- - -"_s},
        {"another member last", parts(a + "<string>x</string>"), u"- - -"_s},
        {"list in the list", parts(a + "<array>" + a + "</array>"), u"- - -"_s},
        {"dictionary instead", inRoot(key(a)), u"- - -"_s},
        {"text instead", inRoot(key("<string>A</string>")), u"- - -"_s},
        {"deeper key", parts("<dict><key>x</key>" + a + "</dict>"), u"- - -"_s},
        {"key after a container",
         parts("<dict><key>x</key><array>" + a + "</array>" + name + "C</string></dict>"), u"- - [C]"_s},
        {"name of another type", parts("<dict><key>name</key><integer>1</integer></dict>"), u"- - -"_s},
        {"last of equal keys", parts("<dict>" + name + "A</string>" + name + "B</string></dict>"),
         u"- - [B]"_s},
        {"last of equal lists, new dictionary",
         inRoot(key("<array>" + a + "<dict/></array>") + key("<array>" + b + "</array>")), u"- - [B]"_s},
        {"last of equal lists, no dictionary", inRoot(key("<array>" + a + "</array>") + key("<array/>")),
         u"- - -"_s},
        {"other root key", inRoot("<key>pieces</key><array>" + a + "</array>"), u"- - -"_s},
    });
}

TEST(PropertyListXml, RejectsMalformedLists)
{
    const QByteArray good = inRoot("<key>id</key><string>i</string>");
    const QByteArrayList badMembers =
        QByteArray("<key>id</key>|<string>i</string>|<key>id</key><key>x</key><string>i</string>|"
                   "<key>id</key><string>i</string><string>j</string>|<key>id</key><string>i<b/></string>|"
                   "<key>i<dict/>d</key><string>i</string>|<key>id</key><string>i<string>j</string></string>|"
                   "<key>id</key><integer>1<true/></integer>|<key>id</key><text>i</text>|"
                   "<key>id</key><String>i</String>|<key>x</key><array><key>id</key></array>|"
                   "<key>x</key><dict><key>y</key></dict>|stray|<key>x</key>stray<true/>|"
                   "<key>x</key><array>stray</array>|<key>id</key><string>&undefined;</string>|"
                   "<key>id</key><string>\xFF</string>|<key>id</key><string>\x1B</string>|"
                   "<key>id</key><string>a & b</string>|<key>id</key><string>i</key>|"
                   "<key>x</key><array><integer/></array>|<key>x</key><integer>1.5</integer>|"
                   "<key>x</key><integer>0x</integer>|<key>x</key><integer>1 2</integer>|"
                   "<key>x</key><real>.</real>|<key>x</key><real>1e</real>|<key>x</key><real>one</real>|"
                   "<key>x</key><date>2001-01-01</date>|<key>x</key><date>2001-13-01T00:00:00Z</date>|"
                   "<key>x</key><date>2001-01-01T00:00:00Z.</date>")
            .split('|');
    QByteArrayList bad =
        QByteArray(
            "| |text|<plist/>|<plist></plist>|<plist><array/></plist>|<string>x</string>|<dict/><dict/>|"
            "<plist></plist><dict/>|<plist><dict/><dict/></plist>|<plist><plist><dict/></plist></plist>|"
            "<dict><plist/></dict>|<html/>|"
            "<!DOCTYPE plist [<!ENTITY e \"x\">]><dict><key>id</key><string>&e;</string></dict>|"
            "<!DOCTYPE plist SYSTEM \"file:///nowhere\"><dict><key>id</key><string>&e;</string></dict>")
            .split('|');
    bad << good + "x" << good + good << "x" + good;
    for (const QByteArray& members : badMembers)
        bad.append(inRoot(members));
    for (const QByteArray& data : bad) {
        SCOPED_TRACE(data.toStdString());
        EXPECT_EQ(answers(data), u"nothing"_s);
        EXPECT_EQ(answers(data + kFullParser), u"nothing"_s);
    }
    for (qsizetype size = 0; size < good.size(); ++size)
        EXPECT_EQ(answers(good.first(size)), u"nothing"_s) << "cut off after " << size;
    EXPECT_EQ(answers(good), u"- [i] -"_s);
}

TEST(PropertyListXml, ReadsUtf16WithAndWithoutByteOrderMark)
{
    const QString text =
        u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><dict><key>id</key><string>\u00E9\U0001F3B9</string></dict>"_s;
    for (const auto encoding : {QStringConverter::Utf16BE, QStringConverter::Utf16LE}) {
        for (const auto flag : {QStringConverter::Flag::Default, QStringConverter::Flag::WriteBom})
            EXPECT_EQ(answers(QStringEncoder(encoding, flag)(text)), u"- [\u00E9\U0001F3B9] -"_s);
    }
}

TEST(PropertyListXml, BothParsersAgree)
{
    QByteArrayList seed; // every tag and text
    const QByteArray list =
        infoPlist({{u"id"_s, u"i \u00E9"_s}},
                  "<key>parts</key><array><dict><key>name</key><string>n</string></dict></array>"
                  "<key>version</key><integer>1</integer>");
    for (const QByteArray& piece : QByteArray(list).replace('<', "|<").replace('>', ">|").split('|')) {
        if (!piece.isEmpty())
            seed.append(piece);
    }
    const QByteArrayList others =
        seed +
        QByteArray(
            "| |\t\n|\r\n|<dict/>|<true/>|<string/>|<array/>|<plist>|<plist/>|<dict >|</dict >|<key/>|<!--c-->|"
            "<?p?>|&amp;|]]>|<|>|/|\xC3|\xEF\xBF\xBF|\x01|<b/>|<dict a=\"b\">|<![CDATA[c]]>|<dict//>|< dict>|"
            "<//dict>|\xEF\xBB\xBF|" +
            QByteArray(seed[2]).replace("Apple", "Apple Computer"))
            .split('|');
    int understood = 0;
    const auto compare = [&understood](const QByteArrayList& pieces) {
        const QByteArray data = pieces.join();
        const QString fast = answers(data);
        EXPECT_EQ(fast, answers(data + kFullParser)) << data.toStdString();
        understood += fast == u"nothing"_s ? 0 : 1;
    };
    for (qsizetype at = 0; at < seed.size(); ++at) {
        for (const QByteArray& other : others) {
            QByteArrayList pieces = seed;
            pieces.insert(at, other);
            compare(pieces);
            pieces.removeAt(at + 1);
            compare(pieces);
            pieces.removeAt(at);
            compare(pieces);
        }
    }
    EXPECT_GT(understood, 300);
}

TEST(PropertyListXml, SurvivesEntityBombsAndDeepNesting)
{
    QByteArray bomb = "<!DOCTYPE plist [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ';';
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    bomb += "]>";
    EXPECT_EQ(answers(bomb + "<dict><key>id</key><string>&e11;</string></dict>"), u"nothing"_s);
    EXPECT_EQ(answers(bomb + "<dict><key>id</key><string x=\"&e11;\">i</string></dict>"), u"nothing"_s);

    const QByteArray id = "<key>id</key><string>i</string>";
    const int depth = 100'000;
    const QByteArray opened = QByteArray("<array>").repeated(depth);
    const QByteArray closed = QByteArray("</array>").repeated(depth);
    const QByteArray deep = inRoot("<key>parts</key>" + opened + closed + id);
    EXPECT_EQ(answers(deep), u"- [i] -"_s);
    EXPECT_EQ(answers(deep + kFullParser), u"- [i] -"_s);
    EXPECT_EQ(answers(inRoot("<key>parts</key>" + opened)), u"nothing"_s);
}

/// A list with all three answers, whose texts and members are too many for a count within the marker.
QByteArray fullBinary(int referenceSize, int offsetSize)
{
    const auto references = [referenceSize](const QList<int>& numbers) {
        QByteArray bytes;
        for (const int number : numbers)
            bytes += bigEndian(static_cast<quint64>(number), referenceSize);
        return bytes;
    };
    const QList<int> padding(18, 4); // "parts", and its list
    return binaryPropertyList({"\x54name", "\x5F\x10\x1CMaker: Plugin of a long name",
                               "\xD1" + references({0, 1}), "\xA2" + references({2, 2}), "\x55parts",
                               "\x62\0i\0d"_ba, "\x63\x00\xE9\xD8\x3C\xDF\xB9"_ba, "\x57version",
                               "\x61\0001"_ba,
                               "\xDF\x11\x00\x14"_ba + references(padding) + references({5, 7}) +
                                   references(QList<int>(18, 3)) + references({6, 8})},
                              referenceSize, offsetSize);
}

TEST(PropertyListBinary, ReadsEveryWidthAndRejectsTruncatedFiles)
{
    const QString wanted = u"[1] [\u00E9\U0001F3B9] [Maker: Plugin of a long name]"_s;
    for (int referenceSize = 1; referenceSize <= 8; ++referenceSize) {
        for (int offsetSize = 2; offsetSize <= 8; ++offsetSize)
            EXPECT_EQ(answers(fullBinary(referenceSize, offsetSize)), wanted);
    }
    const QByteArray good = fullBinary(1, 2);
    for (qsizetype size = 0; size < good.size(); ++size)
        EXPECT_EQ(answers(good.first(size)), u"nothing"_s) << "cut off after " << size;
    EXPECT_EQ(answers(good + '\0'), u"nothing"_s);
}

TEST(PropertyListBinary, Answers)
{
    const auto list = [](const QByteArrayList& objects) { return binaryPropertyList(objects); };
    const auto id = [](const QByteArray& value) {
        return binaryPropertyList({"\x52id", value, "\xD1\0\1"_ba});
    };
    const auto parts = [](const QByteArray& value) {
        return binaryPropertyList({"\x54name", "\x51\x41", "\xD1\0\1"_ba, "\x55parts", value, "\xD1\3\4"_ba});
    };
    expectAll({
        {"empty text", id("\x50"), u"- [] -"_s},
        {"lone surrogates", id("\x62\xDC\x01\xD8\x01"), u"- ["_s + QChar(0xDC01) + QChar(0xD801) + u"] -"_s},
        {"list under a text's key", id("\xA0"), u"- - -"_s},
        {"empty list", parts("\xA0"), u"- - -"_s},
        {"text in place of a list", parts("\x51\x41"), u"- - -"_s},
        {"first dictionary", parts("\xA2\2\2"), u"- - [A]"_s},
        {"mixed list", parts("\xA2\2\1"), u"- - -"_s},
        {"dictionary without name", list({"\x55parts", "\xD0", "\xA1\1", "\xD1\0\2"_ba}), u"- - -"_s},
        {"list that holds itself", parts("\xA1\4"), u"- - -"_s},
        {"dictionary that holds itself", list({"\x52id", "\xD1\0\1"_ba}), u"- - -"_s},
        {"last of equal keys", list({"\x52id", "\x51\x61", "\x51\x62", "\xD2\0\0\1\2"_ba}), u"- [b] -"_s},
        {"empty root", list({"\xD0"}), u"- - -"_s},
        {"root is a list", list({"\xA0"}), u"nothing"_s},
        {"key is a number", list({"\x10\x05", "\xD1\0\0"_ba}), u"nothing"_s},
        {"value reference outside", list({"\x51x", "\xD1\0\2"_ba}), u"nothing"_s},
        {"inner reference outside", parts("\xA1\x63"), u"nothing"_s},
        {"nested reference outside", list({"\x51x", "\x51y", "\xD1\1\x63", "\xD1\0\2"_ba}), u"nothing"_s},
        {"huge count of text", id("\x5F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFFx"), u"nothing"_s},
        {"huge count of units", id("\x6F\x13\x80\0\0\0\0\0\0\1"_ba), u"nothing"_s},
        {"huge count of members", parts("\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), u"nothing"_s},
        {"count of 16 bytes", id("\x5F\x14" + QByteArray(16, '\0')), u"nothing"_s},
        {"count cut off by the table", list({"\xDF\x10"}), u"nothing"_s},
        {"count is no number", id("\x5F\x51x"), u"nothing"_s},
    });
}

TEST(PropertyListBinary, RejectsInvalidTrailers)
{
    constexpr quint64 kHuge = ~quint64(0);
    const quint64 overflowing = (quint64(1) << 63) + 3; // to the right size
    // Where a number is in the trailer, its size, and numbers that are invalid there.
    const std::tuple<const char*, int, int, std::vector<quint64>> rows[] = {
        {"size of offsets", 6, 1, {0, 9}},
        {"size of references", 7, 1, {0, 9}},
        {"number of objects", 8, 8, {0, overflowing, kHuge}},
        {"root", 16, 8, {3, kHuge}},
        {"table", 24, 8, {7, kHuge}},
    };
    const QByteArray good = binaryPropertyList({"\x52id", "\x51i", "\xD1\0\1"_ba});
    EXPECT_EQ(answers(good), u"- [i] -"_s);
    for (const auto& [name, offset, size, numbers] : rows) {
        for (const quint64 number : numbers) {
            QByteArray bad = good;
            bad.replace(bad.size() - 32 + offset, size, bigEndian(number, size));
            EXPECT_EQ(answers(bad), u"nothing"_s) << name << ' ' << number;
        }
    }
    EXPECT_EQ(answers("bplist00" + QByteArray(32, '\0')), u"nothing"_s);
}

TEST(PropertyListBinary, ReadsSharedReferencesQuickly)
{
    // Many equal keys refer to one list, which refers many times to one dictionary with many references to
    // one text.
    constexpr int kMany = 200'000;
    const auto counted = [](char marker) { return marker + ("\x12" + bigEndian(kMany, 4)); };
    const auto many = [](quint64 number) { return bigEndian(number, 2).repeated(kMany); };
    const QByteArray text(1'000'000, 'x');
    EXPECT_EQ(answers(binaryPropertyList({"\x54name", "\x5F\x12" + bigEndian(1'000'000, 4) + text,
                                          counted('\xDF') + many(0) + many(1), "\x55parts",
                                          counted('\xAF') + many(2), counted('\xDF') + many(3) + many(4)},
                                         2, 4)),
              u"- - ["_s + QString::fromLatin1(text) + u']');
}

/// Run with sanitizers, this finds invalid memory accesses.
TEST(PropertyList, SurvivesDamagedBytes)
{
    const QByteArray seeds[] = {
        infoPlist({{u"version"_s, u"1.2"_s}, {u"id"_s, u"\u00E9 & b"_s}},
                  "<key>parts</key><array><dict><key>name</key><string>A: B</string></dict></array>"),
        fullBinary(1, 2),
        fullBinary(8, 8),
    };
    std::mt19937 random(20'240'607);
    const auto below = [&](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<unsigned>(limit));
    };
    int understood = 0;
    for (const QByteArray& seed : seeds) {
        for (int round = 0; round < 4000; ++round) {
            QByteArray data = seed;
            for (auto changes = below(4); changes >= 0; --changes)
                data[below(data.size())] = below(3) == 0 ? '\xFF' : static_cast<char>(random());
            if (below(8) == 0)
                data.truncate(below(data.size()));
            // A copy of the exact size, so that reads beyond its end are detected.
            const std::vector<char> exact(data.begin(), data.end());
            const auto texts = readPropertyList({exact.data(), data.size()}, kFields);
            understood += texts && texts->size() == kFields.size() ? 1 : 0;
        }
    }
    EXPECT_GT(understood, 100);
}

} // namespace
} // namespace orvanlite::test
