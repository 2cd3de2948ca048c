#include "Fuzz.h"

#include "discovery/ClapManifest.h"
#include "model/Json.h"

using namespace orvanlite;

namespace {

/// The same through a tree of all values.
std::optional<QString> vendorInTree(QByteArrayView text)
{
    const auto json = parseJson(text);
    if (!json || !json->is_object())
        return std::nullopt;
    const auto plugin = json->find("plugin");
    if (plugin == json->end() || !plugin->is_object())
        return std::nullopt;
    const auto vendor = plugin->find("vendor");
    if (vendor == plugin->end() || !vendor->is_string())
        return std::nullopt;
    return platform::fromUtf8(QByteArrayView(vendor->get_ref<const std::string&>()));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView text = bytesOf(data, size);
    require(vendorInClapManifest(text) == vendorInTree(text));
    return 0;
}
