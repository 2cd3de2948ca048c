#include "shell/ManufacturerWebsites.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView kSearchEngine = u"https://duckduckgo.com";

/// What may stand in a URL's query unencoded, beyond letters and digits.
/// Source: RFC 3986, section 3.4 (unreserved, sub-delims, ":", "@", "/" and "?").
constexpr char kAllowedInQuery[] = "-._~!$&'()*+,;=:@/?";

} // namespace

QUrl webSearchURL(const QString& query)
{
    const QByteArray encoded = QUrl::toPercentEncoding(query, kAllowedInQuery);
    return QUrl(kSearchEngine.toString() + u"/?q="_s + QString::fromLatin1(encoded), QUrl::StrictMode);
}

QUrl manufacturerWebsiteURL(const QString& manufacturer)
{
    return webSearchURL(manufacturer + u" audio plugin"_s);
}

} // namespace orvanlite
