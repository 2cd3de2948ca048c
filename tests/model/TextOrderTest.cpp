#include "model/TextOrder.h"

#include "model/Uuid.h"

#include <QSet>

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(TextOrder, PlainOrderIsByCodePoints)
{
    // U+FF5E has a larger UTF-16 unit than the first half of the rocket, but comes before it.
    const QStringList ascending{u""_s,  u" "_s,  u"10"_s,     u"9"_s,  u"Zebra"_s, u"alpha"_s, u"alpha 2"_s,
                                u"é"_s, u"漢"_s, u"\uE000"_s, u"～"_s, u"🚀"_s,     u"🚀a"_s};
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        for (qsizetype j = 0; j < ascending.size(); ++j)
            EXPECT_EQ(plainLess(ascending[i], ascending[j]), i < j) << i << " < " << j;
    }
    EXPECT_EQ(plainSorted(QSet<QString>(ascending.begin(), ascending.end())), ascending);
}

TEST(TextOrder, LocalizedComparisonIgnoresLetterCase)
{
    EXPECT_EQ(localizedCompare(u"ALPHA", u"alpha"), 0);
    EXPECT_LT(localizedCompare(u"alpha", u"Beta"), 0);
    EXPECT_GT(localizedCompare(u"beta", u"Alpha"), 0);
    EXPECT_TRUE(localizedContains(u"Große HÖHE", u"höhe"));
    EXPECT_TRUE(localizedContains(u"Name", u""));
    EXPECT_FALSE(localizedContains(u"Hohe", u"höhe"));
}

TEST(Uuid, ReadsOnlyTheCanonicalForm)
{
    const QByteArray text = "00FF10AB-CDEF-4123-8F00-0123456789AB";
    const QUuid id(u"{00ff10ab-cdef-4123-8f00-0123456789ab}"_s);
    EXPECT_TRUE(parseUuid(text) == id && parseUuid(text.toLower()) == id);
    EXPECT_TRUE(uuidBytes(id) == text && uuidText(id) == QString::fromLatin1(text));
    for (const char* wrong :
         {"", "{00FF10AB-CDEF-4123-8F00-0123456789AB}", "00FF10AB-CDEF-4123-8F00-0123456789A",
          "00FF10AB-CDEF-4123-8F00-0123456789AG", "00FF10ABC-DEF-4123-8F00-0123456789AB",
          " 0FF10AB-CDEF-4123-8F00-0123456789AB", "00FF10AB-CDEF-4123-8F00_0123456789AB"})
        EXPECT_EQ(parseUuid(wrong), std::nullopt) << wrong;
}

TEST(Uuid, NewOnesAreRandomAndDiffer)
{
    QSet<QUuid> ids;
    for (int i = 0; i < 5000; ++i) { // more than one buffer of random words
        const QUuid id = makeUuid();
        ASSERT_TRUE(id.version() == QUuid::Random && id.variant() == QUuid::DCE);
        ids.insert(id);
    }
    EXPECT_EQ(ids.size(), 5000);
}

} // namespace orvanlite::test
