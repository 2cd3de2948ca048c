#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvanlite {

/// What the update service answers. Absent members read as false and empty.
struct UpdateAnswer {
    bool updateAvailable = false;
    QString latestVersion;
    QString downloadUrl; ///< not checked, see hasTrustedHost()
    QString releaseNotes;
};

/// Errors: empty for anything but a JSON object whose known members all have the right type.
[[nodiscard]] std::optional<UpdateAnswer> decodeUpdateAnswer(QByteArrayView json);

/// Whether the URL leads to one of the hosts, which are written as QUrl normalises them. Only the parsed host
/// counts: a trusted name in the user info, the path or a longer host proves nothing.
[[nodiscard]] bool hasTrustedHost(const QString& url, const QStringList& trustedHosts);

} // namespace orvanlite
