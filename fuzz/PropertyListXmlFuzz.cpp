#include "Fuzz.h"

#include "platform/PlainXml.h"
#include "platform/PropertyListCollector.h"

#include <array>

using namespace orvanlite::platform;
using namespace Qt::StringLiterals;

/// The fast reader accepts nothing that the full one reads differently.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array kFields{PropertyListField{"CFBundleName"_L1}, PropertyListField{"a"_L1},
                                 PropertyListField{"AudioComponents"_L1, "name"_L1}};
    const QByteArrayView bytes = bytesOf(data, size);
    PropertyListCollector plain(kFields);
    if (!readPlainXml({bytes.data(), size}, plain)) {
        static_cast<void>(readXmlPropertyList(bytes, kFields));
        return 0;
    }
    // The fast reader leaves comments to the full one.
    require(plain.finish() == readXmlPropertyList(bytes.toByteArray() + "<!---->", kFields));
    return 0;
}
