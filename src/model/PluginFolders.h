#pragma once

#include "model/PluginFormat.h"

namespace orvanlite {

/// Every folder whose entries of the format are plugins, at any depth: where hosts look, then where disabled ones
/// lie. Empty for `wavesBundle`, see isWavesVersionFolder().
[[nodiscard]] QStringList pluginFolders(PluginFormat format, const platform::SystemLayout& layout);

/// Whether a folder of this name in the Waves folder holds plugins, and disabled ones in its folder "Disabled".
[[nodiscard]] bool isWavesVersionFolder(QStringView name);

/// Whether a file of this name, without its extension, holds other plugins, so that its removal would switch all of
/// them off. It counts as no plugin.
[[nodiscard]] bool isPluginContainer(const QString& name);

} // namespace orvanlite
