#pragma once

#include "model/Observable.h"

#include <QPointer>
#include <QString>
#include <QStringList>

#include <qcorotask.h>

#include <chrono>

class QNetworkAccessManager;

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

/// Update server and trusted download hosts; configured at build time.
struct UpdateService {
    QString baseUrl; ///< without a trailing slash
    QString defaultDownloadUrl;
    QStringList trustedHosts;
    std::chrono::milliseconds timeOut{15'000};

    /// The configuration of this build: ORV_UPDATE_BASE_URL, ORV_UPDATE_DOWNLOAD_URL and
    /// ORV_UPDATE_TRUSTED_HOSTS. The defaults are hosts that cannot exist.
    [[nodiscard]] static UpdateService ofThisBuild();
};

/// Asks the service for a newer version. The service decides; versions are not compared here.
///
/// Errors:  without a valid answer nothing changes, silently. The HTTP status is ignored.
/// Effects: sets the four values, which are not persisted.
class UpdateChecker final {
public:
    /// The instance of this process.
    static UpdateChecker& shared(const platform::Platform& platform);

    UpdateChecker(const platform::Platform& platform, UpdateService service);
    UpdateChecker(const UpdateChecker&) = delete;
    UpdateChecker& operator=(const UpdateChecker&) = delete;

    Observable<bool> updateAvailable{false};
    Observable<QString> latestVersion;
    /// The service's URL if its host is trusted, otherwise the default download URL.
    Observable<QString> updateDownloadURL;
    Observable<QString> updateReleaseNotes;

    /// Calls may overlap; the last answer wins.
    QCoro::Task<> checkForUpdates();

private:
    [[nodiscard]] QByteArray requestBody() const;
    void takeOver(const QByteArray& json);

    const platform::Platform& m_platform;
    const UpdateService m_service;
    QPointer<QNetworkAccessManager> m_network; ///< child of the application object, which it must not outlive
};

/// An identifier that is stable on this machine and differs between machines; the machine's own identifier
/// cannot be derived from it.
[[nodiscard]] QString hardwareId(const platform::Platform& platform);

} // namespace orvanlite
