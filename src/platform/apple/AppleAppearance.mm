#include "platform/apple/AppleAppearance.h"

#include "platform/apple/AppleBridge.h"

#import <AppKit/AppKit.h>

namespace {

NSString* const kAppearanceKey = @"effectiveAppearance";

} // namespace

/// Light and dark have no notification; observe the application's property instead.
@interface OrvAppearanceWatcher : NSObject {
    std::function<void()> _handler;
}
- (instancetype)initWithHandler:(std::function<void()>)handler;
@end

@implementation OrvAppearanceWatcher

- (instancetype)initWithHandler:(std::function<void()>)handler
{
    self = [super init];
    if (self)
        _handler = std::move(handler);
    return self;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context
{
    Q_UNUSED(keyPath)
    Q_UNUSED(object)
    Q_UNUSED(change)
    Q_UNUSED(context)
    // Copied: the handler may destroy its context and with it this object.
    const auto running = _handler;
    running();
}

@end

namespace orvanlite::platform {

std::optional<bool> AppleAppearance::isDark() const
{
    NSArray* names = [NSArray arrayWithObjects:NSAppearanceNameAqua, NSAppearanceNameDarkAqua, nil];
    NSAppearance* appearance = [[NSApplication sharedApplication] effectiveAppearance];
    NSString* name = [appearance bestMatchFromAppearancesWithNames:names];
    if (!name)
        return std::nullopt;
    return [name isEqualToString:NSAppearanceNameDarkAqua] == YES;
}

std::optional<Rgb> AppleAppearance::accentColour() const
{
    __block std::optional<Rgb> accent;
    // The colour depends on light or dark and is resolved for the current drawing appearance.
    [[[NSApplication sharedApplication] effectiveAppearance] performAsCurrentDrawingAppearance:^{
      NSColor* colour = [[NSColor controlAccentColor] colorUsingColorSpace:[NSColorSpace sRGBColorSpace]];
      if (colour)
          accent = Rgb{[colour redComponent], [colour greenComponent], [colour blueComponent]};
    }];
    return accent;
}

bool AppleAppearance::reducesMotion() const
{
    return [[NSWorkspace sharedWorkspace] accessibilityDisplayShouldReduceMotion];
}

bool AppleAppearance::increasesContrast() const
{
    return [[NSWorkspace sharedWorkspace] accessibilityDisplayShouldIncreaseContrast];
}

void AppleAppearance::observe(QObject* context, std::function<void()> handler)
{
    const auto changed = [handler](NSNotification*) { handler(); };
    observeNative([NSNotificationCenter defaultCenter], NSSystemColorsDidChangeNotification, context,
                  changed);
    observeNative([[NSWorkspace sharedWorkspace] notificationCenter],
                  NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, context, changed);

    NSApplication* application = [NSApplication sharedApplication];
    OrvAppearanceWatcher* watcher = [[OrvAppearanceWatcher alloc] initWithHandler:std::move(handler)];
    [application addObserver:watcher forKeyPath:kAppearanceKey options:0 context:nullptr];
    QObject::connect(context, &QObject::destroyed, context, [application, watcher] {
        [application removeObserver:watcher forKeyPath:kAppearanceKey];
        [watcher release];
    });
}

} // namespace orvanlite::platform
