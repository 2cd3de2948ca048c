#pragma once

#include <QString>
#include <QVariant>

namespace orvanlite::platform {

/// One domain of user defaults: small persistent values by name.
class Defaults {
public:
    Defaults() = default;
    Defaults(const Defaults&) = delete;
    Defaults& operator=(const Defaults&) = delete;
    virtual ~Defaults() = default;

    /// Booleans, integers, strings and byte arrays; an invalid variant for a key that was never set.
    [[nodiscard]] virtual QVariant value(const QString& key) const = 0;

    /// Stores the value and flushes it, so that another process notified of the change reads the new value.
    /// An equal value is not rewritten; a failed write is ignored.
    virtual void setValue(const QString& key, const QVariant& value) = 0;
};

/// The application's own defaults and the suites shared with its helper.
class DefaultsStore {
public:
    DefaultsStore() = default;
    DefaultsStore(const DefaultsStore&) = delete;
    DefaultsStore& operator=(const DefaultsStore&) = delete;
    virtual ~DefaultsStore() = default;

    [[nodiscard]] virtual Defaults& standard() = 0;

    /// The shared suite of that name, opened once; null when it cannot be opened.
    [[nodiscard]] virtual Defaults* suite(const QString& name) = 0;
};

} // namespace orvanlite::platform
