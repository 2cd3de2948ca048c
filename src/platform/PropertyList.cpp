#include "platform/PropertyList.h"

namespace orvanlite::platform {

std::optional<PropertyListTexts> readPropertyList(QByteArrayView data,
                                                  std::span<const PropertyListField> wanted)
{
    return data.startsWith("bplist00") ? readBinaryPropertyList(data, wanted)
                                       : readXmlPropertyList(data, wanted);
}

} // namespace orvanlite::platform
