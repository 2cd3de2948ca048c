#pragma once

// Precedes every source: declarations of Foundation and AppKit that GNUstep lacks, as in Apple's
// documentation. A wrong declaration here hides the same mistake in the sources, so compare each new one with
// the documentation.

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

@interface NSAppleEventDescriptor (Missing)
@property(readonly, copy) NSString* stringValue;
@end

@interface NSAppleScript (Missing)
- (instancetype)initWithSource:(NSString*)source;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)errorInfo;
@end

@interface NSUserDefaults (Missing)
- (instancetype)initWithSuiteName:(NSString*)suitename;
@end

@interface NSAppearance (Missing)
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block;
@end

@interface NSApplication (Missing)
@property(readonly, retain) NSAppearance* effectiveAppearance;
@end

@interface NSColor (Missing)
@property(class, readonly, retain) NSColor* controlAccentColor;
@end

@interface NSColorSpace (Missing)
@property(class, readonly, retain) NSColorSpace* sRGBColorSpace;
@end

@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
+ (instancetype)configuration;
@end

@interface NSWorkspace (Missing)
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property(readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication* app, NSError* error))completionHandler;
@end

extern "C" NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;
