#include "platform/apple/AppleUserNotifications.h"

#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>

#include <QCoreApplication>

/// Without a delegate the system shows no banner of the application that is in front.
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
    // The centre does not retain its delegate, and both live as long as the process.
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
    // The system ends a process that asks for the centre outside of a bundle.
    if (![[NSBundle mainBundle] bundleIdentifier])
        return;
    // Copies: what a block takes of a reference is the reference, and the caller's texts are gone when it runs.
    const auto deliver = [ownTitle = title, ownBody = body] { post(ownTitle, ownBody); };
    [centre() requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                            completionHandler:^(BOOL granted, NSError* /*error*/) {
                              // On a thread of the system's; ours is the main one only.
                              if (granted && qApp)
                                  QMetaObject::invokeMethod(qApp, deliver, Qt::QueuedConnection);
                            }];
}

} // namespace orvanlite::platform
