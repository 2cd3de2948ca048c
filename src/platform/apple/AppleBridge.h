#pragma once

// For Objective-C++ sources only: conversions between Qt and Foundation. Returned objects are autoreleased.

#include <QString>
#include <QVariant>

#include <functional>

class QObject;
@class NSNotification;
@class NSNotificationCenter;
@class NSString;

namespace orvanlite::platform {

[[nodiscard]] NSString* toNative(const QString& text);
/// Nil becomes an empty string.
[[nodiscard]] QString fromNative(NSString* text);

/// Booleans, numbers, strings and byte arrays as property list objects; nil for anything else.
[[nodiscard]] id toNativeObject(const QVariant& value);
/// The reverse; an invalid variant for nil and for objects of other classes.
[[nodiscard]] QVariant fromNativeObject(id object);

/// Calls the handler on the main thread for every notification of that name, for the lifetime of `context`.
void observeNative(NSNotificationCenter* center, NSString* name, QObject* context,
                   std::function<void(NSNotification*)> handler);

} // namespace orvanlite::platform
