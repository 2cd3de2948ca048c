#include "platform/apple/AppleWorkspace.h"

#include "platform/apple/AppleBridge.h"

#import <AppKit/AppKit.h>

namespace orvanlite::platform {

bool AppleWorkspace::open(const QUrl& url)
{
    NSURL* native = url.isLocalFile() ? [NSURL fileURLWithPath:toNative(url.toLocalFile())]
                                      : [NSURL URLWithString:toNative(QString::fromLatin1(url.toEncoded()))];
    return native && [[NSWorkspace sharedWorkspace] openURL:native];
}

std::vector<RunningApplication> AppleWorkspace::runningApplications() const
{
    std::vector<RunningApplication> applications;
    for (NSRunningApplication* each in [[NSWorkspace sharedWorkspace] runningApplications]) {
        if (![each bundleIdentifier])
            continue;
        applications.push_back({[each processIdentifier],
                                fromNative([each bundleIdentifier]),
                                fromNative([[[each bundleURL] URLByStandardizingPath] path])});
    }
    return applications;
}

void AppleWorkspace::openApplication(const QString& bundlePath)
{
    [[NSWorkspace sharedWorkspace] openApplicationAtURL:[NSURL fileURLWithPath:toNative(bundlePath)]
                                          configuration:[NSWorkspaceOpenConfiguration configuration]
                                      completionHandler:nil];
}

void AppleWorkspace::terminate(const RunningApplication& application)
{
    NSRunningApplication* native = [NSRunningApplication
        runningApplicationWithProcessIdentifier:static_cast<pid_t>(application.processId)];
    // The process id may have been reused since the list was created.
    if (fromNative([native bundleIdentifier]) == application.bundleIdentifier)
        [native terminate];
}

} // namespace orvanlite::platform
