#include "platform/PropertyList.h"

#include "support/PropertyListWriter.h"
#include "support/TempRoot.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <array>
#include <random>

namespace orvanlite::test {
namespace {

using namespace Qt::StringLiterals;
using platform::PropertyListField;
using platform::PropertyListTexts;
using platform::readPropertyList;

using Text = std::optional<QString>;

constexpr std::array kFields{
    PropertyListField{"version"_L1},
    PropertyListField{"id"_L1},
    PropertyListField{"parts"_L1, "name"_L1},
};

/// The three answers as one text; "-" for an absent one, "nothing" for no list at all.
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

/// Lists written the usual way are read by a short way of their own; a comment behind the root sends the same list
/// through the full parser.
const QByteArray kLongWay = "<!---->";

void expectAll(const std::vector<Case>& cases)
{
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(answers(each.data), each.wanted);
        const QByteArray other = each.data.startsWith("bplist") ? each.data : each.data + kLongWay;
        EXPECT_EQ(answers(other), each.wanted);
    }
}

const QByteArray kDoctype =
    R"(<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">)";
const QByteArray kOldDoctype = QByteArray(kDoctype).replace("Apple", "Apple Computer");

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
        {"empty root", inRoot(""), u"- - -"_s},
        {"empty root, one tag", "<plist><dict/></plist>", u"- - -"_s},
        {"empty texts", inRoot("<key>version</key><string/><key>id</key><string></string>"), u"[] [] -"_s},
        {"blanks stay", inRoot("<key>id</key><string> \n i\t</string>"), u"- [ \n i\t] -"_s},
        {"other types", inRoot("<key>version</key><integer>1</integer><key>id</key><true/>"), u"- - -"_s},
        {"containers", inRoot("<key>version</key><array><string>1</string></array><key>id</key><dict/>"),
         u"- - -"_s},
        {"deeper keys are others",
         inRoot("<key>x</key><dict><key>id</key><string>no</string></dict>"
                "<key>y</key><array><dict><key>id</key><string>no</string></dict></array>"),
         u"- - -"_s},
        {"last of equal keys", inRoot(id + "<key>id</key><string>j</string>"), u"- [j] -"_s},
        {"last of equal keys, other type", inRoot(id + "<key>id</key><false/>"), u"- - -"_s},
        {"all other types",
         inRoot("<key>a</key><array><real>1.5</real><real>-.5E+3</real><real>+Infinity</real>"
                "<integer> -7\n</integer><integer>0xFf</integer></array>"
                "<key>b</key><date>2001-01-01T00:00:00Z</date><key>c</key><data>AAAA</data>" +
                id),
         u"- [i] -"_s},
        {"CDATA, references, comments",
         inRoot(
             "<!-- <key> --><key>i<![CDATA[d]]></key><string>&lt;<![CDATA[<&>]]>&#x41;&#66;<!-- c -->&quot;</string>"),
         u"- [<<&>AB\"] -"_s},
        {"processing instruction", inRoot("<?x y?>" + id) + "<?x y?>\n", u"- [i] -"_s},
        {"combining accent", inRoot("<key>id</key><string>e\xCC\x81</string>"), u"- [e\u0301] -"_s},
        {"UTF-8 mark", "\xEF\xBB\xBF" + inRoot(id), u"- [i] -"_s},
        {"UTF-8 mark in a text", inRoot("<key>id</key><string>\xEF\xBB\xBFi</string>"), u"- [\uFEFFi] -"_s},
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
    const auto parts = [](const QByteArray& value) { return inRoot("<key>parts</key>" + value); };
    const QByteArray named = "<dict><key>name</key><string>A</string></dict>";
    expectAll({
        {"only the first",
         parts("<array>" + named + "<dict><key>name</key><string>B</string></dict></array>"), u"- - [A]"_s},
        {"first without the key", parts("<array><dict/>" + named + "</array>"), u"- - -"_s},
        {"another member first", parts("<array><true/>" + named + "</array>"), u"- - -"_s},
        {"another member last", parts("<array>" + named + "<string>x</string></array>"), u"- - -"_s},
        {"list in the list", parts("<array>" + named + "<array>" + named + "</array></array>"), u"- - -"_s},
        {"empty list", parts("<array/>"), u"- - -"_s},
        {"dictionary instead", parts(named), u"- - -"_s},
        {"text instead", parts("<string>A</string>"), u"- - -"_s},
        {"deeper key", parts("<array><dict><key>x</key>" + named + "</dict></array>"), u"- - -"_s},
        {"key after a container",
         parts("<array><dict><key>x</key><array>" + named +
               "</array><key>name</key><string>C</string></dict></array>"),
         u"- - [C]"_s},
        {"name of another type", parts("<array><dict><key>name</key><integer>1</integer></dict></array>"),
         u"- - -"_s},
        {"last of equal keys",
         parts(
             "<array><dict><key>name</key><string>A</string><key>name</key><string>B</string></dict></array>"),
         u"- - [B]"_s},
        {"last of equal lists, new dictionary",
         inRoot("<key>parts</key><array>" + named +
                "<dict/></array><key>parts</key><array><dict><key>name</key>"
                "<string>B</string></dict></array>"),
         u"- - [B]"_s},
        {"last of equal lists, no dictionary",
         inRoot("<key>parts</key><array>" + named +
                "</array><key>parts</key><array><array><string>x</string></array></array>"),
         u"- - -"_s},
        {"last of equal lists",
         inRoot("<key>parts</key><array>" + named + "</array><key>parts</key><array/>"), u"- - -"_s},
        {"other root key", inRoot("<key>pieces</key><array>" + named + "</array>"), u"- - -"_s},
    });
}

TEST(PropertyListXml, RefusesWhatIsNotWellFormed)
{
    const QByteArray good = inRoot("<key>id</key><string>i</string>");
    const QByteArray bad[] = {
        "",
        " ",
        "text",
        "<plist/>",
        "<plist></plist>",
        "<plist><array/></plist>",
        "<string>x</string>",
        "<dict/><dict/>",
        "<plist></plist><dict/>",
        inRoot("<key>id</key><string>\x1B</string>"),
        "<plist><dict/><dict/></plist>",
        "<plist><plist><dict/></plist></plist>",
        "<dict><plist/></dict>",
        "<html/>",
        good + "x",
        good + good,
        "x" + good,
        inRoot("<key>id</key>"),
        inRoot("<string>i</string>"),
        inRoot("<key>id</key><key>x</key><string>i</string>"),
        inRoot("<key>id</key><string>i</string><string>j</string>"),
        inRoot("<key>id</key><string>i<b/></string>"),
        inRoot("<key>i<dict/>d</key><string>i</string>"),
        inRoot("<key>id</key><string>i<string>j</string></string>"),
        inRoot("<key>id</key><integer>1<true/></integer>"),
        inRoot("<key>id</key><text>i</text>"),
        inRoot("<key>id</key><String>i</String>"),
        inRoot("<key>x</key><array><key>id</key></array>"),
        inRoot("<key>x</key><dict><key>y</key></dict>"),
        inRoot("stray"),
        inRoot("<key>x</key>stray<true/>"),
        inRoot("<key>x</key><array>stray</array>"),
        inRoot("<key>id</key><string>&undefined;</string>"),
        inRoot("<key>id</key><string>\xFF</string>"),
        inRoot("<key>id</key><string>a & b</string>"),
        inRoot("<key>id</key><string>i</key>"),
        "<!DOCTYPE plist [<!ENTITY e \"x\">]><dict><key>id</key><string>&e;</string></dict>",
        "<!DOCTYPE plist SYSTEM \"file:///nowhere\"><dict><key>id</key><string>&e;</string></dict>",
        kDoctype + kOldDoctype + "<plist><dict/></plist>",
        inRoot("<key>x</key><array><integer/></array>"),
        inRoot("<key>x</key><integer>1.5</integer>"),
        inRoot("<key>x</key><integer>0x</integer>"),
        inRoot("<key>x</key><integer>1 2</integer>"),
        inRoot("<key>x</key><real>.</real>"),
        inRoot("<key>x</key><real>1e</real>"),
        inRoot("<key>x</key><real>one</real>"),
        inRoot("<key>x</key><date>2001-01-01</date>"),
        inRoot("<key>x</key><date>2001-13-01T00:00:00Z</date>"),
        inRoot("<key>x</key><date>2001-01-01T00:00:00Z.</date>"),
    };
    for (const QByteArray& data : bad) {
        SCOPED_TRACE(data.toStdString());
        EXPECT_EQ(answers(data), u"nothing"_s);
        EXPECT_EQ(answers(data + kLongWay), u"nothing"_s);
    }
    for (qsizetype size = 0; size < good.size(); ++size)
        EXPECT_EQ(answers(good.first(size)), u"nothing"_s) << "cut off after " << size;
    EXPECT_EQ(answers(good), u"- [i] -"_s);
}

TEST(PropertyListXml, ReadsUtf16WithAndWithoutMark)
{
    const QString text =
        u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><dict><key>id</key><string>\u00E9\U0001F3B9</string></dict>"_s;
    QByteArray big;
    QByteArray little;
    for (const QChar unit : text) {
        big += bigEndian(unit.unicode(), 2);
        little +=
            QByteArray(1, static_cast<char>(unit.unicode() & 0xFF)) + static_cast<char>(unit.unicode() >> 8);
    }
    for (const QByteArray& data : {"\xFE\xFF" + big, "\xFF\xFE" + little, big, little})
        EXPECT_EQ(answers(data), u"- [\u00E9\U0001F3B9] -"_s);
}

TEST(PropertyListXml, BothWaysAgree)
{
    const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + kDoctype;
    const QByteArrayList seed =
        QByteArray(head + "|\n|<plist version=\"1.0\">|<dict>|<key>|id|</key>|<string>|i \xC3\xA9|"
                          "</string>|<key>|parts|</key>|<array>|<dict>|<key>|name|</key>|<string>|n|"
                          "</string>|</dict>|</array>|<key>|version|</key>|<integer>|1|</integer>|"
                          "</dict>|</plist>|\n")
            .split('|');
    const QByteArrayList others =
        seed +
        QByteArray(
            "| |\t\n|\r\n|<dict/>|<true/>|<string/>|<array/>|<plist>|<plist/>|<dict >|</dict >|<key/>|<!--c-->|"
            "<?p?>|&amp;|]]>|<|>|/|\xC3|\xEF\xBF\xBF|\x01|<b/>|<dict a=\"b\">|<![CDATA[c]]>|<dict//>|< dict>|"
            "<//dict>|\xEF\xBB\xBF|" +
            kOldDoctype)
            .split('|');
    std::mt19937 random(5);
    const auto below = [&](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<unsigned>(limit));
    };
    int understood = 0;
    for (int round = 0; round < 20'000; ++round) {
        QByteArrayList pieces = seed;
        for (auto changes = below(3); changes >= 0; --changes) {
            const qsizetype place = below(pieces.size());
            switch (below(4)) {
            case 0:
                pieces.removeAt(place);
                break;
            case 1:
                pieces.insert(place, others[below(others.size())]);
                break;
            case 2:
                pieces[place] = others[below(others.size())];
                break;
            default:
                pieces.swapItemsAt(place, below(pieces.size()));
            }
        }
        const QByteArray data = pieces.join();
        const QString plain = answers(data);
        ASSERT_EQ(plain, answers(data + kLongWay)) << data.toStdString();
        understood += plain == u"nothing"_s ? 0 : 1;
    }
    EXPECT_GT(understood, 1000);
    EXPECT_LT(understood, 18'000);
}

/// Bytes that are allocated; none where the sanitizers have an allocator of their own.
std::size_t inUse()
{
    const auto information = mallinfo2();
    return information.uordblks + information.hblkhd;
}

TEST(PropertyListXml, BombsEndAtOnceAndDepthCostsNoStack)
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
    const auto before = inUse();
    EXPECT_EQ(answers(deep + kLongWay), u"- [i] -"_s);
    EXPECT_LT(inUse(), before + 2'000'000) << "what one list needed is not kept for the next";
    EXPECT_EQ(answers(inRoot("<key>parts</key>" + opened)), u"nothing"_s);
}

/// A list with all three answers, and long enough texts and enough members for counts behind the marker.
QByteArray fullBinary(int referenceSize, int offsetSize)
{
    BinaryPropertyList list(referenceSize);
    const int name = list.addText(u"name"_s);
    const int component = list.addDictionary({{name, list.addText(u"Maker: Plugin of a long name"_s)}});
    const int parts = list.addList({component, component});
    std::vector<std::pair<int, int>> root;
    for (int i = 0; i < 20; ++i)
        root.emplace_back(list.addText(QString::number(i)), parts);
    root.emplace_back(list.addText(u"parts"_s), parts);
    root.emplace_back(list.addUtf16(u"id"_s), list.addText(u"\u00E9\U0001F3B9"_s));
    root.emplace_back(list.addText(u"version"_s), list.addUtf16(u"1"_s));
    return list.finished(list.addDictionary(root), offsetSize);
}

TEST(PropertyListBinary, ReadsEveryWidthAndRefusesCutFiles)
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

/// A binary list whose root holds one value under "parts" or "id"; `make` adds the value and returns its
/// number.
template <typename Make>
QByteArray binaryWith(const QString& key, Make make)
{
    BinaryPropertyList list;
    const int value = make(list);
    const int keyNumber = list.addText(key);
    return list.finished(list.addDictionary({{keyNumber, value}}));
}

TEST(PropertyListBinary, Answers)
{
    using List = BinaryPropertyList;
    const auto id = [](auto make) { return binaryWith(u"id"_s, make); };
    const auto parts = [](auto make) { return binaryWith(u"parts"_s, make); };
    const auto named = [](List& list) {
        return list.addDictionary({{list.addText(u"name"_s), list.addText(u"A"_s)}});
    };
    const auto rootOf = [](auto make) {
        List list;
        return list.finished(make(list));
    };
    expectAll({
        {"empty text", id([](List& l) { return l.addText(u""_s); }), u"- [] -"_s},
        {"lone surrogates", id([](List& l) { return l.addRaw("\x62\xDC\x01\xD8\x01"_ba); }),
         u"- ["_s + QChar(0xDC01) + QChar(0xD801) + u"] -"_s},
        {"number", id([](List& l) { return l.addRaw("\x10\x05"_ba); }), u"- - -"_s},
        {"true", id([](List& l) { return l.addRaw("\x09"_ba); }), u"- - -"_s},
        {"list under a text's key", id([](List& l) { return l.addList({}); }), u"- - -"_s},
        {"empty list", parts([](List& l) { return l.addList({}); }), u"- - -"_s},
        {"text in place of a list", parts([](List& l) { return l.addText(u"A"_s); }), u"- - -"_s},
        {"first dictionary", parts([&](List& l) {
             return l.addList({named(l), named(l)});
         }),
         u"- - [A]"_s},
        {"mixed list", parts([&](List& l) {
             return l.addList({named(l), l.addText(u"A"_s)});
         }),
         u"- - -"_s},
        {"dictionary without name", parts([&](List& l) {
             return l.addList({l.addDictionary({}), named(l)});
         }),
         u"- - -"_s},
        {"list that holds itself", parts([](List& l) { return l.addList({l.nextNumber()}); }), u"- - -"_s},
        {"dictionary that holds itself", rootOf([](List& l) {
             const int key = l.addText(u"id"_s);
             return l.addDictionary({{key, l.nextNumber()}});
         }),
         u"- - -"_s},
        {"last of equal keys", rootOf([](List& l) {
             const int key = l.addText(u"id"_s);
             const int first = l.addText(u"a"_s);
             return l.addDictionary({{key, first}, {key, l.addText(u"b"_s)}});
         }),
         u"- [b] -"_s},
        {"empty root", rootOf([](List& l) { return l.addDictionary({}); }), u"- - -"_s},
        {"root is a text", rootOf([](List& l) { return l.addText(u"id"_s); }), u"nothing"_s},
        {"root is a list", rootOf([](List& l) { return l.addList({}); }), u"nothing"_s},
        {"key is a number", rootOf([](List& l) {
             const int number = l.addRaw("\x10\x05"_ba);
             return l.addDictionary({{number, number}});
         }),
         u"nothing"_s},
        {"value reference outside", rootOf([](List& l) {
             const int key = l.addText(u"x"_s);
             return l.addDictionary({{key, 99}});
         }),
         u"nothing"_s},
        {"inner reference outside", parts([](List& l) { return l.addList({99}); }), u"nothing"_s},
        {"reference outside below an unwanted key",
         binaryWith(u"x"_s,
                    [](List& l) {
                        return l.addList({l.addDictionary({{l.addText(u"y"_s), 99}})});
                    }),
         u"nothing"_s},
        {"huge count of text", id([](List& l) {
             return l.addRaw("\x5F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
                             "a"_ba);
         }),
         u"nothing"_s},
        {"huge count of units",
         id([](List& l) { return l.addRaw("\x6F\x13\x80\x00\x00\x00\x00\x00\x00\x01"_ba); }), u"nothing"_s},
        {"huge count of members",
         parts([](List& l) { return l.addRaw("\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"_ba); }),
         u"nothing"_s},
        {"count of 16 bytes", id([](List& l) { return l.addRaw("\x5F\x14" + QByteArray(16, '\0')); }),
         u"nothing"_s},
        {"count cut off by the table", rootOf([](List& l) {
             const int root = l.addDictionary({{1, 2}});
             l.addText(u"id"_s);
             l.addRaw("\x5F\x13"_ba);
             return root;
         }),
         u"nothing"_s},
        {"count is no number", id([](List& l) {
             return l.addRaw("\x5F\x51"
                             "a"_ba);
         }),
         u"nothing"_s},
    });
}

TEST(PropertyListBinary, RefusesFalseTrailers)
{
    struct Row {
        const char* name;
        int behindTrailerStart;
        QByteArray bytes;
    };
    const Row rows[] = {
        {"no offset size", 6, "\0"_ba},
        {"offset size 9", 6, "\x09"_ba},
        {"no reference size", 7, "\0"_ba},
        {"reference size 9", 7, "\x09"_ba},
        {"reference size 255", 7, "\xFF"_ba},
        {"no objects", 8, bigEndian(0, 8)},
        {"huge object count", 8, bigEndian(~quint64(0), 8)},
        {"count that overflows to the right size", 8, bigEndian((quint64(1) << 63) + 3, 8)},
        {"root outside", 16, bigEndian(3, 8)},
        {"huge root", 16, bigEndian(~quint64(0), 8)},
        {"table in the header", 24, bigEndian(7, 8)},
        {"table outside", 24, bigEndian(~quint64(0), 8)},
    };
    const QByteArray good =
        binaryWith(u"id"_s, [](BinaryPropertyList& list) { return list.addText(u"i"_s); });
    EXPECT_EQ(answers(good), u"- [i] -"_s);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QByteArray bad = good;
        bad.replace(bad.size() - 32 + row.behindTrailerStart, row.bytes.size(), row.bytes);
        EXPECT_EQ(answers(bad), u"nothing"_s);
    }
    EXPECT_EQ(answers("bplist00"), u"nothing"_s);
    EXPECT_EQ(answers("bplist00" + QByteArray(32, '\0')), u"nothing"_s);
}

TEST(PropertyListBinary, SharedReferencesCostNothing)
{
    // As many equal keys as references fit, each naming the one list with as many references to one
    // dictionary.
    BinaryPropertyList list(2);
    const int parts = list.addText(u"parts"_s);
    const int component = list.addDictionary({{list.addText(u"name"_s), list.addText(u"A"_s)}});
    const int components = list.addList(std::vector<int>(200'000, component));
    const int root = list.addDictionary(std::vector<std::pair<int, int>>(200'000, {parts, components}));
    EXPECT_EQ(answers(list.finished(root, 4)), u"- - [A]"_s);

    // The same within the dictionary, with one long text.
    BinaryPropertyList inner(2);
    const QString text(1'000'000, u'x');
    const std::pair<int, int> name{inner.addText(u"name"_s), inner.addText(text)};
    const int only = inner.addList({inner.addDictionary(std::vector<std::pair<int, int>>(200'000, name))});
    const int innerRoot = inner.addDictionary({{inner.addText(u"parts"_s), only}});
    EXPECT_EQ(answers(inner.finished(innerRoot, 4)), u"- - ["_s + text + u']');
}

/// Damage of every kind must neither crash nor write outside; the sanitizers watch.
TEST(PropertyList, SurvivesDamagedBytes)
{
    const QByteArray seeds[] = {
        infoPlist({{u"version"_s, u"1.2"_s}, {u"id"_s, u"\u00E9 & b"_s}},
                  "<key>parts</key><array><dict><key>name</key><string>A: B</string></dict></array>"),
        fullBinary(1, 2),
        fullBinary(8, 8),
        binaryInfoPlist({{u"version"_s, u"1"_s}, {u"id"_s, u"\u00E9"_s}}, u"A: B"_s),
    };
    std::mt19937 random(20'240'607);
    int understood = 0;
    for (const QByteArray& seed : seeds) {
        for (int round = 0; round < 4000; ++round) {
            QByteArray data = seed;
            for (auto changes = random() % 4 + 1; changes > 0; --changes) {
                const auto place = static_cast<qsizetype>(random() % static_cast<unsigned>(data.size()));
                data[place] = random() % 3 == 0 ? '\xFF' : static_cast<char>(random());
            }
            if (random() % 8 == 0)
                data.truncate(static_cast<qsizetype>(random() % static_cast<unsigned>(data.size())));
            // A copy of exactly the size, so that a byte read behind it is noticed.
            const std::vector<char> exact(data.begin(), data.end());
            const QByteArrayView view(exact.data(), static_cast<qsizetype>(exact.size()));
            const auto texts = readPropertyList(view, kFields);
            understood += texts && texts->size() == kFields.size() ? 1 : 0;
        }
    }
    EXPECT_GT(understood, 100); // the damage is small enough to get past the first check
}

} // namespace
} // namespace orvanlite::test
