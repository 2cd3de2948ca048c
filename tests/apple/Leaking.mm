#import <Foundation/Foundation.h>

// Lacks a release: the check has to fail on this file.
NSUInteger lengthOfCopy(NSString* text);

NSUInteger lengthOfCopy(NSString* text)
{
    NSString* copy = [[NSString alloc] initWithString:text];
    return [copy length];
}
