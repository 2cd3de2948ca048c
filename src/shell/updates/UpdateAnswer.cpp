#include "shell/updates/UpdateAnswer.h"

#include "model/Json.h"

#include <QUrl>

namespace orvanlite {

namespace {

QString optionalText(const JsonObject& object, const char* key)
{
    return object.has(key) ? object.text(key) : QString();
}

} // namespace

std::optional<UpdateAnswer> decodeUpdateAnswer(QByteArrayView text)
{
    const std::optional<nlohmann::json> json = parseJson(text);
    if (!json)
        return std::nullopt;
    try {
        const JsonObject object(*json);
        UpdateAnswer answer;
        answer.updateAvailable = object.has("update_available") && object.boolean("update_available");
        answer.latestVersion = optionalText(object, "latest_version");
        answer.downloadUrl = optionalText(object, "download_url");
        answer.releaseNotes = optionalText(object, "release_notes");
        return answer;
    } catch (const JsonError&) {
        return std::nullopt;
    }
}

bool hasTrustedHost(const QString& url, const QStringList& trustedHosts)
{
    const QUrl parsed(url, QUrl::StrictMode);
    // The hosts are web servers: file://host or smb://host would open something else of that name.
    const bool isWeb = parsed.scheme() == u"https" || parsed.scheme() == u"http";
    return parsed.isValid() && isWeb && trustedHosts.contains(parsed.host());
}

} // namespace orvanlite
