#include "platform/ScriptAnswer.h"
#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>

#include <cstdio>

using namespace orvanlite::platform;

namespace {

/// All values as strings: messages unchanged, numbers in decimal, ranges as the system describes them.
ScriptErrorDictionary textsOf(NSDictionary* error)
{
    ScriptErrorDictionary texts;
    for (NSString* key in error)
        texts.insert(fromNative(key), fromNative([[error objectForKey:key] description]));
    return texts;
}

ScriptOutcome run(NSString* source)
{
    ScriptOutcome outcome;
    NSAppleScript* script = [[[NSAppleScript alloc] initWithSource:source] autorelease];
    NSDictionary* error = nil;
    // An empty script and one without a result both return a descriptor without a string.
    if (NSAppleEventDescriptor* result = [script executeAndReturnError:&error])
        outcome.result = fromNative([result stringValue]);
    if (error)
        outcome.error = textsOf(error);
    return outcome;
}

} // namespace

/// Runs the script on standard input and writes its outcome to standard output. A separate executable, as the
/// system's script service blocks the calling thread; in a bundle of its own inside the main one, so that the
/// password prompt shows the application's name and the Dock no second icon.
int main()
{
    @autoreleasepool {
        NSData* input = [[NSFileHandle fileHandleWithStandardInput] readDataToEndOfFile];
        NSString* source = [[[NSString alloc] initWithData:input encoding:NSUTF8StringEncoding] autorelease];
        const QByteArray answer = encodeScriptAnswer(source ? run(source) : ScriptOutcome());
        const bool written = std::fwrite(answer.constData(), 1, static_cast<std::size_t>(answer.size()),
                                         stdout) == static_cast<std::size_t>(answer.size());
        return written && std::fflush(stdout) == 0 ? 0 : 1;
    }
}
