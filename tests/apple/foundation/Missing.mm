// What GNUstep's Foundation lacks, as built for Debian. The rest of it is the library's own.
#import <Foundation/Foundation.h>

#include <missing.h>

/// A suite, as a domain that is written to a file of its own.
@interface OrvSuite : NSUserDefaults {
    NSString* _name;
}
@end

@implementation OrvSuite

- (instancetype)initNamed:(NSString*)name
{
    self = [super init];
    if (self)
        _name = [name copy];
    return self;
}

- (void)dealloc
{
    [_name release];
    [super dealloc];
}

- (NSMutableDictionary*)contents
{
    NSUserDefaults* standard = [NSUserDefaults standardUserDefaults];
    return [NSMutableDictionary dictionaryWithDictionary:[standard persistentDomainForName:_name]];
}

- (id)objectForKey:(NSString*)key
{
    return [[self contents] objectForKey:key];
}

- (void)setObject:(id)object forKey:(NSString*)key
{
    NSMutableDictionary* contents = [self contents];
    [contents setObject:object forKey:key];
    [[NSUserDefaults standardUserDefaults] setPersistentDomain:contents forName:_name];
}

- (BOOL)synchronize
{
    return [[NSUserDefaults standardUserDefaults] synchronize];
}

@end

@implementation NSUserDefaults (Missing)

- (instancetype)initWithSuiteName:(NSString*)name
{
    [self release];
    return [[OrvSuite alloc] initNamed:name];
}

@end

/// Answers like the script service: a source that is no sum fails as a cancelled prompt does.
static NSString* runningSource = nil;

@implementation NSAppleScript (Missing)

- (instancetype)initWithSource:(NSString*)source
{
    runningSource = [source copy];
    return [self init];
}

- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)errorInfo
{
    if ([runningSource isEqualToString:@"return 1 + 1"])
        return [[[NSAppleEventDescriptor alloc] init] autorelease];
    *errorInfo =
        [NSDictionary dictionaryWithObjectsAndKeys:[NSNumber numberWithInt:-128], @"NSAppleScriptErrorNumber",
                                                   @"User canceled: “ü”", @"NSAppleScriptErrorMessage", nil];
    return nil;
}

@end

@implementation NSAppleEventDescriptor (Missing)

- (NSString*)stringValue
{
    return @"2";
}

@end
