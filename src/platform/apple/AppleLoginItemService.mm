#include "platform/apple/AppleLoginItemService.h"

#include "platform/FileManager.h"
#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

#include <cerrno>

namespace orvanlite::platform {

static_assert(static_cast<int>(LoginItemStatus::notRegistered) == SMAppServiceStatusNotRegistered &&
              static_cast<int>(LoginItemStatus::enabled) == SMAppServiceStatusEnabled &&
              static_cast<int>(LoginItemStatus::requiresApproval) == SMAppServiceStatusRequiresApproval &&
              static_cast<int>(LoginItemStatus::notFound) == SMAppServiceStatusNotFound);

namespace {

/// Created once per agent and kept.
SMAppService* serviceOf(const QString& identifier)
{
    static NSMutableDictionary* const services = [[NSMutableDictionary alloc] init];
    NSString* key = toNative(identifier);
    SMAppService* service = [services objectForKey:key];
    if (!service) {
        service = [SMAppService loginItemServiceWithIdentifier:key];
        [services setObject:service forKey:key];
    }
    return service;
}

} // namespace

LoginItemStatus AppleLoginItemService::status(const QString& identifier) const
{
    return static_cast<LoginItemStatus>([serviceOf(identifier) status]);
}

void AppleLoginItemService::registerItem(const QString& identifier, const QString& bundlePath)
{
    NSError* error = nil;
    if (![serviceOf(identifier) registerAndReturnError:&error])
        throw FileError(EPERM, bundlePath, fromNative([error localizedDescription]));
}

void AppleLoginItemService::unregisterItem(const QString& identifier)
{
    NSError* error = nil;
    if (![serviceOf(identifier) unregisterAndReturnError:&error])
        throw FileError(EPERM, identifier, fromNative([error localizedDescription]));
}

} // namespace orvanlite::platform
