#import <Foundation/Foundation.h>

// Lacks a letter: the check has to fail on this file.
BOOL isLight(NSString* name);

BOOL isLight(NSString* name) { return [name isEqualToStrin:@"Light"]; }
