#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>

class QObject;

namespace orvanlite::platform {

/// Notifications between processes of one user session. Does nothing where the session has no such service.
class NotificationCenter {
public:
    using Handler = std::function<void(const QVariantMap& userInfo)>;

    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;
    virtual ~NotificationCenter() = default;

    /// Posts with immediate delivery. The name is dotted, e.g. "com.yourcompany.Orvanlite.appDidLaunch".
    virtual void post(const QString& name, const QVariantMap& userInfo) = 0;

    /// Calls the handler on the main thread for every such notification, for the lifetime of `context`.
    virtual void observe(const QString& name, QObject* context, Handler handler) = 0;
};

} // namespace orvanlite::platform
