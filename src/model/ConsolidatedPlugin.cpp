#include "model/ConsolidatedPlugin.h"

namespace orvanlite {

QString FormatVariant::badgeLabel() const
{
    if (format == PluginFormat::wavesBundle && version)
        return *version;
    return rawValue(format);
}

} // namespace orvanlite
