#pragma once

// For Objective-C++ sources only: values on their way between Qt and Foundation. What is returned is
// autoreleased.

#include <QString>
#include <QVariant>

#include <functional>

class QObject;
@class NSNotification;
@class NSNotificationCenter;
@class NSString;

namespace orvanlite::platform {

[[nodiscard]] NSString* toNative(const QString& text);
/// Nil gives an empty text.
[[nodiscard]] QString fromNative(NSString* text);

/// Booleans, integers, numbers, texts and byte arrays as property list objects; nil for anything else.
[[nodiscard]] id toNativeObject(const QVariant& value);
/// The other way; an invalid variant for nil and for objects of other classes.
[[nodiscard]] QVariant fromNativeObject(id object);

/// Calls the handler on the main thread for every notification of that name while `context` lives.
void observeNative(NSNotificationCenter* center, NSString* name, QObject* context,
                   std::function<void(NSNotification*)> handler);

} // namespace orvanlite::platform
