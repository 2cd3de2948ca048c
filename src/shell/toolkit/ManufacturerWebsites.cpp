#include "shell/toolkit/ManufacturerWebsites.h"

#include "shell/toolkit/ManufacturerWebsiteTable.h"

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView kSearchEngine = u"https://duckduckgo.com";

/// Characters allowed unencoded in a URL's query, besides letters and digits.
/// Source: RFC 3986, section 3.4 (unreserved, sub-delims, ":", "@", "/" and "?").
constexpr char kAllowedInQuery[] = "-._~!$&'()*+,;=:@/?";

} // namespace

QUrl webSearchURL(const QString& query)
{
    // An unpaired surrogate cannot be encoded; search for nothing then.
    const QByteArray encoded =
        query.isValidUtf16() ? QUrl::toPercentEncoding(query, kAllowedInQuery) : QByteArray();
    return QUrl(kSearchEngine.toString() + u"/?q="_s + QString::fromLatin1(encoded), QUrl::StrictMode);
}

QUrl manufacturerWebsiteURL(const QString& manufacturer)
{
    const QString name = manufacturer.toLower().trimmed();
    const auto found = std::find_if(kManufacturerWebsites.begin(), kManufacturerWebsites.end(),
                                    [&name](const auto& row) { return name.contains(row.key); });
    if (found != kManufacturerWebsites.end())
        return QUrl(found->url.toString(), QUrl::StrictMode);
    return webSearchURL(manufacturer + u" audio plugin"_s);
}

} // namespace orvanlite
