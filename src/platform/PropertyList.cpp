#include "platform/PropertyList.h"

namespace orvanlite::platform {

std::optional<PropertyListTexts> readPropertyList(QByteArrayView, std::span<const PropertyListField>)
{
    return std::nullopt;
}

} // namespace orvanlite::platform
