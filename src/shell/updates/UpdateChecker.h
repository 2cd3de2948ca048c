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

/// Where updates are asked for and where they may come from: settings of a build.
struct UpdateService {
    QString baseUrl; ///< without a trailing slash
    QString defaultDownloadUrl;
    QStringList trustedHosts;
    std::chrono::milliseconds timeOut{15'000};

    /// Of this build, from the settings ORV_UPDATE_BASE_URL, ORV_UPDATE_DOWNLOAD_URL and ORV_UPDATE_TRUSTED_HOSTS.
    /// Unless these are set, hosts that cannot exist.
    [[nodiscard]] static UpdateService ofThisBuild();
};

/// Asks the service whether there is a newer version. The verdict is the service's: no versions are compared here.
///
/// Errors:  without an answer that can be read everything stays as it is, in silence. The HTTP status is not looked at.
/// Effects: assigns the four values, which are kept for this run only.
class UpdateChecker final {
public:
    /// The one of the process.
    static UpdateChecker& shared(const platform::Platform& platform);

    UpdateChecker(const platform::Platform& platform, UpdateService service);
    UpdateChecker(const UpdateChecker&) = delete;
    UpdateChecker& operator=(const UpdateChecker&) = delete;

    Observable<bool> updateAvailable{false};
    Observable<QString> latestVersion;
    /// On a trusted host, whatever the service says.
    Observable<QString> updateDownloadURL;
    Observable<QString> updateReleaseNotes;

    /// Two of these may overlap: the later answer wins.
    QCoro::Task<> checkForUpdates();

private:
    [[nodiscard]] QByteArray requestBody() const;
    void takeOver(const QByteArray& answer);
    [[nodiscard]] QString trustedDownloadUrl(const QString& url) const;

    const platform::Platform& m_platform;
    const UpdateService m_service;
    QPointer<QNetworkAccessManager> m_network; ///< the application's: it must not outlive it
};

/// A text that is the same at each run on this machine and different on every other; the machine's own identifier
/// cannot be found from it.
[[nodiscard]] QString hardwareId(const platform::Platform& platform);

} // namespace orvanlite
