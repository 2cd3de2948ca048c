#include "platform/apple/AppleUserNotifications.h"

#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>

#include <QCoreApplication>

/// Without a delegate the system shows no banners of the frontmost application.
@interface OrvBannerPresenter : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation OrvBannerPresenter

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler
{
    Q_UNUSED(center)
    Q_UNUSED(notification)
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList);
}

@end

namespace orvanlite::platform {

namespace {

UNUserNotificationCenter* centre()
{
    UNUserNotificationCenter* shared = [UNUserNotificationCenter currentNotificationCenter];
    // The centre does not retain its delegate; both live as long as the process.
    static OrvBannerPresenter* const presenter = [[OrvBannerPresenter alloc] init];
    if (![shared delegate])
        [shared setDelegate:presenter];
    return shared;
}

void post(const QString& title, const QString& body)
{
    UNMutableNotificationContent* content = [[[UNMutableNotificationContent alloc] init] autorelease];
    [content setTitle:toNative(title)];
    [content setBody:toNative(body)];
    UNNotificationRequest* request = [UNNotificationRequest requestWithIdentifier:[[NSUUID UUID] UUIDString]
                                                                          content:content
                                                                          trigger:nil];
    [centre() addNotificationRequest:request withCompletionHandler:nil];
}

} // namespace

void AppleUserNotifications::show(const QString& title, const QString& body)
{
    // Outside a bundle, requesting the centre aborts the process.
    if (![[NSBundle mainBundle] bundleIdentifier])
        return;
    // Copies: a block captures references as references, and the caller's strings are gone when it runs.
    const auto deliver = [ownTitle = title, ownBody = body] { post(ownTitle, ownBody); };
    [centre() requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                            completionHandler:^(BOOL granted, NSError* /*error*/) {
                              // Called on a background thread.
                              if (granted && qApp)
                                  QMetaObject::invokeMethod(qApp, deliver, Qt::QueuedConnection);
                            }];
}

} // namespace orvanlite::platform
