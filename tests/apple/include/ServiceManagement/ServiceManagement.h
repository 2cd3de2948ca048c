#pragma once

#import <Foundation/Foundation.h>

// As Apple's documentation of the Service Management framework declares them (macOS 13).

typedef NS_ENUM(NSInteger, SMAppServiceStatus) {
    SMAppServiceStatusNotRegistered,
    SMAppServiceStatusEnabled,
    SMAppServiceStatusRequiresApproval,
    SMAppServiceStatusNotFound,
};

@interface SMAppService : NSObject
+ (instancetype)loginItemServiceWithIdentifier:(NSString*)identifier;
- (BOOL)registerAndReturnError:(NSError**)error;
- (BOOL)unregisterAndReturnError:(NSError**)error;
@property(readonly) SMAppServiceStatus status;
@end
