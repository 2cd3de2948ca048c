#include "platform/apple/AppleNotificationCenter.h"

#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>

namespace orvanlite::platform {

void AppleNotificationCenter::post(const QString& name, const QVariantMap& userInfo)
{
    NSMutableDictionary* members = nil;
    for (auto each = userInfo.cbegin(); each != userInfo.cend(); ++each) {
        if (!members)
            members = [NSMutableDictionary dictionary];
        if (id object = toNativeObject(each.value()))
            [members setObject:object forKey:toNative(each.key())];
    }
    [[NSDistributedNotificationCenter defaultCenter] postNotificationName:toNative(name)
                                                                   object:nil
                                                                 userInfo:members
                                                       deliverImmediately:YES];
}

void AppleNotificationCenter::observe(const QString& name, QObject* context, Handler handler)
{
    const auto deliver = [handler = std::move(handler)](NSNotification* notification) {
        QVariantMap userInfo;
        NSDictionary* members = [notification userInfo];
        for (id key in members) {
            if ([key isKindOfClass:[NSString class]])
                userInfo.insert(fromNative(key), fromNativeObject([members objectForKey:key]));
        }
        handler(userInfo);
    };
    observeNative([NSDistributedNotificationCenter defaultCenter], toNative(name), context, deliver);
}

} // namespace orvanlite::platform
