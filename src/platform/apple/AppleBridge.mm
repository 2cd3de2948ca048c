#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>

#include <QObject>

namespace orvanlite::platform {

static_assert(sizeof(unichar) == sizeof(char16_t));

NSString* toNative(const QString& text)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar*>(text.utf16())
                                   length:static_cast<NSUInteger>(text.size())];
}

QString fromNative(NSString* text)
{
    QString copy(static_cast<qsizetype>([text length]), Qt::Uninitialized);
    [text getCharacters:reinterpret_cast<unichar*>(copy.data()) range:NSMakeRange(0, [text length])];
    return copy;
}

id toNativeObject(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return [NSNumber numberWithBool:value.toBool() ? YES : NO];
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return [NSNumber numberWithLongLong:value.toLongLong()];
    case QMetaType::Double:
        return [NSNumber numberWithDouble:value.toDouble()];
    case QMetaType::QString:
        return toNative(value.toString());
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return [NSData dataWithBytes:bytes.constData() length:static_cast<NSUInteger>(bytes.size())];
    }
    default:
        return nil;
    }
}

QVariant fromNativeObject(id object)
{
    if ([object isKindOfClass:[NSString class]])
        return fromNative(object);
    if ([object isKindOfClass:[NSData class]]) {
        NSData* data = object;
        return QByteArray(static_cast<const char*>([data bytes]), static_cast<qsizetype>([data length]));
    }
    if (![object isKindOfClass:[NSNumber class]])
        return {};
    NSNumber* number = object;
    // Booleans are NSNumbers of a subclass; their type code is that of a character.
    if ([number isKindOfClass:[[NSNumber numberWithBool:YES] class]])
        return [number boolValue] == YES;
    const char code = *[number objCType];
    if (code == *@encode(double) || code == *@encode(float))
        return [number doubleValue];
    return QVariant(static_cast<qlonglong>([number longLongValue]));
}

void observeNative(NSNotificationCenter* center, NSString* name, QObject* context,
                   std::function<void(NSNotification*)> handler)
{
    id token = [center addObserverForName:name
                                   object:nil
                                    queue:[NSOperationQueue mainQueue]
                               usingBlock:^(NSNotification* notification) {
                                 // Copied: the handler may destroy its context and with it this block.
                                 const auto running = handler;
                                 running(notification);
                               }];
    [token retain];
    QObject::connect(context, &QObject::destroyed, context, [center, token] {
        [center removeObserver:token];
        [token release];
    });
}

} // namespace orvanlite::platform
