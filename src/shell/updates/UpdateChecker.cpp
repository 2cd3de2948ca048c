#include "shell/updates/UpdateChecker.h"

#include "model/Json.h"
#include "platform/Defaults.h"
#include "platform/FileManager.h"
#include "platform/MainBundle.h"
#include "platform/Platform.h"
#include "shell/updates/UpdateAnswer.h"
#include "shell/updates/UpdateConfiguration.h"

#include <QCoreApplication>
#include <QMessageAuthenticationCode>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSysInfo>
#include <QTimer>
#include <QUrl>
#include <QUuid>

#include <qcoronetworkreply.h>

#include <memory>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Lower error codes come from the connection, higher ones from the server response.
constexpr auto kFirstContentError = QNetworkReply::ContentAccessDenied;

constexpr int kFirstErrorStatus = 400;

/// Well above the size of any valid answer, in bytes.
constexpr qint64 kLongestAnswer = 1 << 20;
constexpr qint64 kLongestMachineId = 1'024;
const QString kStoredMachine = u"machineIdentifier"_s;

struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
};

/// Whether an HTTP response has been received completely, with any status.
bool isAnswered(const QNetworkReply& reply)
{
    const QNetworkReply::NetworkError error = reply.error();
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // Status 407 counts like any other, although Qt reports it as a failed connection.
    const bool connectionFailed = error != QNetworkReply::NoError && error < kFirstContentError &&
                                  error != QNetworkReply::ProxyAuthenticationRequiredError;
    // A truncated or undecodable body is reported with the error of an unknown status, but with a status
    // below 400.
    const bool isBroken = error == QNetworkReply::ProtocolFailure ||
                          (error == QNetworkReply::UnknownContentError && status < kFirstErrorStatus);
    return status > 0 && !connectionFailed && !isBroken && reply.bytesAvailable() <= kLongestAnswer;
}

/// Limits the total duration of a request and the size of its answer: the transfer timeout of Qt only covers
/// inactivity.
void limit(QNetworkReply* reply, std::chrono::milliseconds timeOut)
{
    QTimer::singleShot(timeOut, reply, &QNetworkReply::abort);
    QObject::connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received, qint64) {
        if (received > kLongestAnswer)
            reply->abort();
    });
}

/// Normalised like the host of a parsed URL, so that the case in the configuration does not matter.
QStringList normalisedHosts(const QStringList& hosts)
{
    QStringList normalised;
    for (const QString& host : hosts)
        normalised.append(QUrl(u"https://"_s + host).host());
    normalised.removeAll(QString()); // invalid hosts: an empty one would match URLs without a host
    return normalised;
}

/// A random substitute for the machine identifier, created on first use.
QByteArray storedMachine(platform::Defaults& defaults)
{
    const QByteArray stored = defaults.value(kStoredMachine).toString().toUtf8();
    if (!stored.isEmpty())
        return stored;
    const QString created = QUuid::createUuid().toString(QUuid::WithoutBraces);
    defaults.setValue(kStoredMachine, created);
    return created.toUtf8();
}

} // namespace

UpdateService UpdateService::ofThisBuild()
{
    return {QStringLiteral(ORV_UPDATE_BASE_URL), QStringLiteral(ORV_UPDATE_DOWNLOAD_URL),
            QStringLiteral(ORV_UPDATE_TRUSTED_HOSTS).split(u' ', Qt::SkipEmptyParts)};
}

UpdateChecker& UpdateChecker::shared(const platform::Platform& platform)
{
    static UpdateChecker checker(platform, UpdateService::ofThisBuild());
    return checker;
}

UpdateChecker::UpdateChecker(const platform::Platform& platform, UpdateService service)
    : m_platform(platform)
    , m_service{std::move(service.baseUrl), std::move(service.defaultDownloadUrl),
                normalisedHosts(service.trustedHosts), service.timeOut}
{}

QByteArray UpdateChecker::requestBody() const
{
    const QString version =
        m_platform.mainBundle.infoText(u"CFBundleShortVersionString"_s).value_or(u"0.0.0"_s);
    nlohmann::ordered_json body;
    body["app_version"] = toUtf8(version);
    body["hardware_id"] = toUtf8(hardwareId(m_platform));
    return writeJson(body);
}

QCoro::Task<> UpdateChecker::checkForUpdates()
{
    QNetworkRequest request(QUrl(m_service.baseUrl + u"/check-update"_s));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    // The request contains the machine's identifier, so redirects must not leave the service.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    if (!m_network)
        m_network = new QNetworkAccessManager(QCoreApplication::instance());
    // The coroutine resumes inside the reply's signal, so the reply must outlive it.
    const std::unique_ptr<QNetworkReply, DeleteLater> reply(m_network->post(request, requestBody()));
    limit(reply.get(), m_service.timeOut);
    co_await reply.get();
    if (isAnswered(*reply))
        takeOver(reply->readAll());
}

void UpdateChecker::takeOver(const QByteArray& json)
{
    const std::optional<UpdateAnswer> answer = decodeUpdateAnswer(json);
    if (!answer)
        return; // no valid answer of the service: keep the current state
    updateAvailable = answer->updateAvailable;
    latestVersion = answer->latestVersion;
    updateDownloadURL = hasTrustedHost(answer->downloadUrl, m_service.trustedHosts)
                            ? answer->downloadUrl
                            : m_service.defaultDownloadUrl;
    updateReleaseNotes = answer->releaseNotes;
}

QString hardwareId(const platform::Platform& platform)
{
    QByteArray machine =
        platform.files.read(platform.layout.machineIdFile(), kLongestMachineId).value_or(QByteArray());
    if (machine.isEmpty() && !platform.layout.isSandbox())
        machine = QSysInfo::machineUniqueId();
    if (machine.trimmed().isEmpty())
        machine = storedMachine(platform.defaults.standard());
    // Keyed with the application name, so that it cannot be correlated with identifiers sent by other
    // software.
    return QString::fromLatin1(QMessageAuthenticationCode::hash(
                                   machine.trimmed(), "com.yourcompany.Orvanlite", QCryptographicHash::Sha256)
                                   .toHex());
}

} // namespace orvanlite
