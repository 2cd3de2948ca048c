#include "platform/SystemLayout.h"
#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// The user's first folder of that kind.
QString userFolder(NSSearchPathDirectory kind)
{
    return fromNative([NSSearchPathForDirectoriesInDomains(kind, NSUserDomainMask, YES) firstObject]);
}

QString withoutSlash(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

} // namespace

SystemLayout SystemLayout::ofThisMachine()
{
    @autoreleasepool {
        SystemLayout layout;
        layout.home = withoutSlash(fromNative(NSHomeDirectory()));
        layout.applicationSupport = userFolder(NSApplicationSupportDirectory);
        layout.configuration = userFolder(NSLibraryDirectory) + u"/Preferences"_s;
        layout.cache = userFolder(NSCachesDirectory);
        // Already private to the user.
        layout.temporary = withoutSlash(fromNative(NSTemporaryDirectory()));
        layout.runtime = layout.temporary;
        layout.desktop = userFolder(NSDesktopDirectory);
        layout.downloads = userFolder(NSDownloadsDirectory);
        layout.documents = userFolder(NSDocumentDirectory);
        return layout;
    }
}

SystemLayout SystemLayout::sandbox(const QString& root)
{
    SystemLayout layout;
    layout.root = root;
    layout.home = root + u"/Users/tester"_s;
    layout.applicationSupport = layout.home + u"/Library/Application Support"_s;
    layout.configuration = layout.home + u"/Library/Preferences"_s;
    layout.cache = layout.home + u"/Library/Caches"_s;
    layout.temporary = layout.cache + u"/Orvanlite/tmp"_s;
    layout.runtime = layout.temporary;
    layout.desktop = layout.home + u"/Desktop"_s;
    layout.downloads = layout.home + u"/Downloads"_s;
    layout.documents = layout.home + u"/Documents"_s;
    layout.toolOverrides = root + u"/tools"_s;
    return layout;
}

} // namespace orvanlite::platform
