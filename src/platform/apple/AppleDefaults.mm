#include "platform/apple/AppleDefaults.h"

#include "platform/apple/AppleBridge.h"

#import <Foundation/Foundation.h>

namespace orvanlite::platform {

class AppleDefaults final : public Defaults {
  public:
    explicit AppleDefaults(NSUserDefaults* native) : m_native([native retain]) {}
    ~AppleDefaults() override { [m_native release]; }

    [[nodiscard]] QVariant value(const QString& key) const override
    {
        return fromNativeObject([m_native objectForKey:toNative(key)]);
    }

    void setValue(const QString& key, const QVariant& value) override
    {
        if (this->value(key) == value)
            return;
        if (id object = toNativeObject(value))
            [m_native setObject:object forKey:toNative(key)];
        else
            [m_native removeObjectForKey:toNative(key)];
        [m_native synchronize];
    }

  private:
    NSUserDefaults* m_native;
};

AppleDefaultsStore::AppleDefaultsStore()
    : m_standard(std::make_unique<AppleDefaults>([NSUserDefaults standardUserDefaults]))
{
}

AppleDefaultsStore::~AppleDefaultsStore() = default;

Defaults& AppleDefaultsStore::standard() { return *m_standard; }

Defaults* AppleDefaultsStore::suite(const QString& name)
{
    // The system rejects the application's own identifier as a suite. Its domain is the standard one here;
    // our other application opens it as a suite.
    if (name == fromNative([[NSBundle mainBundle] bundleIdentifier]))
        return m_standard.get();
    if (const auto known = m_suites.constFind(name); known != m_suites.cend())
        return known->get();
    NSUserDefaults* native = [[[NSUserDefaults alloc] initWithSuiteName:toNative(name)] autorelease];
    if (!native)
        return nullptr;
    return m_suites.insert(name, std::make_shared<AppleDefaults>(native))->get();
}

} // namespace orvanlite::platform
