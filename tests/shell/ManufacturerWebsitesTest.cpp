#include "shell/ManufacturerWebsites.h"

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(ManufacturerWebsitesTest, SearchesTheWebForAMaker)
{
    const struct {
        QString maker;
        QByteArray query;
    } rows[] = {
        {u"Klang Werk"_s, "q=Klang%20Werk%20audio%20plugin"},
        {{}, "q=%20audio%20plugin"},
        {u" Ünder\"Ton "_s, "q=%20%C3%9Cnder%22Ton%20%20audio%20plugin"},
        {u"100%#+?/:@"_s, "q=100%25%23+?/:@%20audio%20plugin"},
    };
    for (const auto& row : rows) {
        const QUrl url = manufacturerWebsiteURL(row.maker);
        ASSERT_TRUE(url.isValid()) << qPrintable(row.maker);
        EXPECT_EQ(url.scheme(), u"https"_s);
        EXPECT_EQ(url.path(), u"/"_s);
        EXPECT_EQ(url.query(QUrl::FullyEncoded).toLatin1(), row.query);
    }
}

} // namespace orvanlite::test
