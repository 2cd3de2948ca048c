#include "shell/toolkit/ManufacturerWebsites.h"

#include "shell/toolkit/ManufacturerWebsiteTable.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(ManufacturerWebsitesTest, FindsEveryManufacturerOfTheTable)
{
    static const QRegularExpression host(u"^([a-z0-9]([a-z0-9-]*[a-z0-9])?\\.)+[a-z]{2,}$"_s);
    EXPECT_FALSE(kManufacturerWebsites.empty());
    for (const auto& row : kManufacturerWebsites) {
        const QString key = row.key.toString();
        SCOPED_TRACE(qPrintable(key));
        EXPECT_EQ(key, key.toLower().trimmed());
        const QUrl url(row.url.toString(), QUrl::StrictMode);
        EXPECT_TRUE(url.isValid() && url.scheme() == u"https"_s && host.match(url.host()).hasMatch());
        EXPECT_EQ(manufacturerWebsiteURL(u" "_s + key.toUpper() + u" Ltd"_s), url);
    }
}

TEST(ManufacturerWebsitesTest, TakesTheFirstMatchingKeyOrSearchesTheWeb)
{
    const QString search = u"duckduckgo.com"_s;
    const std::tuple<QString, QString, QByteArray> rows[] = {
        {u"  FabFilter Software Instruments\n"_s, u"www.fabfilter.com"_s, ""},
        {u"Waves Audio Ltd"_s, u"www.waves.com"_s, ""},
        {u"Waves Factory S.L."_s, u"www.wavesfactory.com"_s, ""},
        {u"Digidesign"_s, u"www.avid.com"_s, ""},
        {u"Squad Audio"_s, u"www.uaudio.com"_s, ""},
        {u"Klang Werk"_s, search, "q=Klang%20Werk%20audio%20plugin"},
        {{}, search, "q=%20audio%20plugin"},
        {u" Ünder\"Ton "_s, search, "q=%20%C3%9Cnder%22Ton%20%20audio%20plugin"},
        {u"100%#+?/:@"_s, search, "q=100%25%23+?/:@%20audio%20plugin"},
        {u"Half "_s + QChar(0xD83C), search, "q="},
    };
    for (const auto& [manufacturer, host, query] : rows) {
        SCOPED_TRACE(qPrintable(manufacturer));
        const QUrl url = manufacturerWebsiteURL(manufacturer);
        EXPECT_TRUE(url.isValid() && url.scheme() == u"https"_s);
        EXPECT_EQ(url.host(), host);
        EXPECT_EQ(url.query(QUrl::FullyEncoded).toLatin1(), query);
    }
}

} // namespace orvanlite::test
